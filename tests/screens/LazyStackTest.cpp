#include "LazyStackFixture.h"
#include "TestMain.h"

#include <memory>
#include <vector>

namespace quillmere {

namespace {

/** While this object exists, horizontal stacks create no items ahead; vertical ones do. */
struct NoAheadInRows : QObject
{
    NoAheadInRows() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto stack = event->type() == QEvent::Timer ? qobject_cast<LazyStack*>(watched) : nullptr;
        return stack && stack->orientation() == Qt::Horizontal;
    }
};

} // namespace

/** A row or column that creates only the items near its viewport. */
class LazyStackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyItemsNearViewportExist_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {0, 1, 2, 9, 200, 10000})
            QTest::addRow("%d", count) << count;
    }

    void onlyItemsNearViewportExist()
    {
        QFETCH(int, count);
        RowsFixture fixture(count);
        QCOMPARE(fixture.row->width(), std::max(0.0, count * pitch - 40));
        for (const qreal position : {0.0, 1000.0, 1e9, 3000.0}) {
            fixture.area->reveal(position, position + 1, true);
            const qreal first = fixture.area->position() - cacheBuffer - 6;
            const qreal last = fixture.area->position() + viewportExtent + cacheBuffer - 6;
            QList<int> near;
            for (int i = 0; i < count; ++i) {
                const bool isNearCurrent = i < 2; // and its neighbour
                if (isNearCurrent || (i * pitch + extent > first && i * pitch < last))
                    near.append(i);
            }
            QTRY_COMPARE(fixture.existing(), near);
            QCOMPARE(fixture.row->itemCount(), near.size());
            for (const int i : near)
                QCOMPARE(fixture.row->itemAt(i)->x(), i * pitch);
        }
    }

    void arrowKeysReachEveryRow_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {2, 20, 200})
            QTest::addRow("%d", count) << count;
    }

    void arrowKeysReachEveryRow()
    {
        QFETCH(int, count);
        RowsFixture fixture(count);
        QCOMPARE(fixture.focusedTitle(), u"0, round 0"_s);
        // After a burst of keys, items may exist around the current row and around the range still visible.
        constexpr int most = int(2 * (viewportExtent + 2 * cacheBuffer) / pitch) + 6;
        for (const int arrow : {Qt::Key_Right, Qt::Key_Left}) {
            for (int step = 1; step <= count; ++step) {
                fixture.press(arrow);
                const int last = std::min(step, count - 1);
                const int at = arrow == Qt::Key_Right ? last : count - 1 - last;
                QCOMPARE(fixture.focusedTitle(), u"%1, round 0"_s.arg(at));
                QCOMPARE(fixture.rows.currentRow(), at);
                QVERIFY(fixture.row->itemCount() <= most);
                QVERIFY(fixture.isFocusVisible(fixture.area->targetPosition()));
                if (step % 7 == 0)
                    QTest::qWait(20);
            }
        }
        QTRY_COMPARE(fixture.area->position(), fixture.area->targetPosition());
    }

    void visibleItemsAreCreatedAtOnceAndOthersLater()
    {
        RowsFixture fixture(200);
        fixture.area->reveal(100 * pitch, 100 * pitch + extent, true);
        const QList<int> atOnce = fixture.existing();
        QCOMPARE(atOnce, (QList<int>{0, 1, 94, 95, 96, 97, 98, 99, 100}));
        const QList<int> inTime{0, 1, 92, 93, 94, 95, 96, 97, 98, 99, 100, 101, 102};
        QTRY_COMPARE(fixture.existing(), inTime);
        fixture.waitUntilIdle();
        QCOMPARE(fixture.existing(), inTime);
    }

    void longScrollCreatesOnlyItemsItPasses()
    {
        RowsFixture fixture(10000);
        fixture.area->reveal(5000 * pitch, 5001 * pitch);
        QVERIFY(fixture.row->itemAt(4998)); // there the scroll will end, so a key can move on from there
        int most = 0;
        connect(fixture.area, &ScrollArea::positionChanged, this,
                [&] { most = std::max(most, fixture.row->itemCount()); });
        QTRY_COMPARE(fixture.area->position(), fixture.area->targetPosition());
        QVERIFY(most <= 25);
    }

    void nestedRowsAreFilledWhenVisible()
    {
        Rows lines(20);
        std::vector<std::unique_ptr<Rows>> cards;
        QVariantList cardModels;
        for (int line = 0; line < lines.rowCount(); ++line) {
            cards.push_back(std::make_unique<Rows>(20));
            cardModels.append(QVariant::fromValue<QObject*>(cards.back().get()));
        }
        LazyStackFixture fixture(cards.front().get());
        auto column = static_cast<LazyStack*>(TestScreen::first(
            fixture.load(
                u"FocusScreen { id: screen; width: 1920; height: 1080;"
                "  property var lines; property var cards;"
                "  ScrollArea { width: 1920; height: 1000; contentExtent: 10000;"
                "    LazyStack { extent: 500; cacheBuffer: 1500; model: screen.lines;"
                "      delegate: FocusSection { id: line; required property int index; width: 1920; height: 500;"
                "        ScrollArea { width: 1780; height: 400; orientation: Qt.Horizontal;"
                "          LazyStack { orientation: Qt.Horizontal; extent: 250; spacing: 40;"
                "            model: screen.cards[line.index]; delegate: Focusable { } } } } } } }"_s,
                {{u"lines"_s, QVariant::fromValue<QObject*>(&lines)}, {u"cards"_s, cardModels}}),
            "LazyStack"));
        const auto cardCount = [column](int row) {
            QQuickItem* line = column->itemAt(row);
            return line ? static_cast<LazyStack*>(TestScreen::first(line, "LazyStack"))->itemCount() : -1;
        };
        // After some time all existing rows are complete, but not before.
        QTRY_COMPARE(cardCount(4), 7);
        NoAheadInRows noAhead;
        lines.setCurrentRow(10);
        QCOMPARE(cardCount(10), 7);
        QCOMPARE(cardCount(11), 7);
        QCOMPARE(cardCount(12), -1);
        auto area = static_cast<ScrollArea*>(column->parentItem()->parentItem());
        area->reveal(5000, 5500);
        QCOMPARE(cardCount(9), 7);
        QTRY_COMPARE(cardCount(13), 0);
        area->reveal(6500, 7000);
        QCOMPARE(cardCount(13), 7);
    }

    void rowsUseExtentsFromModel()
    {
        Rows rows(4);
        rows.setExtents({100, 1, 2000, 50});
        LazyStackFixture fixture(&rows);
        QCOMPARE(fixture.row->implicitWidth(), 2151 + 3 * 40);
        QTRY_COMPARE(fixture.existing(), (QList<int>{0, 1, 2, 3}));
        QList<qreal> positions;
        for (int i = 0; i < 4; ++i)
            positions.append(fixture.row->itemAt(i)->x());
        QCOMPARE(positions, (QList<qreal>{0, 140, 181, 2221}));
    }

    void stackWithoutScrollAreaHasFullExtentAndNoItems()
    {
        Rows rows(200);
        Rows shown(1);
        LazyStack stack;
        LazyStackFixture fixture(&shown);
        stack.setDelegate(fixture.row->delegate());
        stack.setExtent(100);
        stack.setModel(&rows);
        QCOMPARE(stack.implicitHeight(), 20000.0);
        QCOMPARE(stack.itemCount(), 0);
    }

    void stackTracksScrollAreaAfterReparenting()
    {
        RowsFixture fixture(200);
        QQuickItem outside;
        fixture.row->setParentItem(&outside);
        QCOMPARE(fixture.row->itemCount(), 2); // the current row and its neighbour
        auto between = new QQuickItem(fixture.area->contentItem());
        fixture.row->setParentItem(between);
        QTRY_COMPARE(fixture.row->itemCount(), 9);
        between->setX(-100 * pitch);
        QTRY_COMPARE(fixture.row->itemCount(), 11 + 2);
        QVERIFY(fixture.row->itemAt(103));
        fixture.area->setWidth(290);
        QTRY_COMPARE(fixture.row->itemCount(), 6 + 2);
    }

    void noFrameIsDrawnAtRest()
    {
        RowsFixture fixture(200);
        fixture.press(Qt::Key_Right);
        QCOMPARE(fixture.framesAtRest(400), 0);
    }
};

QUILLMERE_TEST(LazyStackTest, QGuiApplication)

} // namespace quillmere

#include "LazyStackTest.moc"
