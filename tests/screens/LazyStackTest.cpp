#include "LazyStackStage.h"

namespace {

/** Rows make nothing ahead while this exists, columns do. */
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

/** A row or column of which only those items exist that are near what is shown. */
class LazyStackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatIsNearExists_data();
    void onlyWhatIsNearExists();
    void aWalkFindsEveryRow_data();
    void aWalkFindsEveryRow();
    void whatIsInSightIsMadeAtOnceAndTheRestInTime();
    void aLongScrollMakesOnlyWhatItPasses();
    void rowsOfRowsFillWhenTheyAreInSight();
    void rowsHaveTheirOwnExtents();
    void itIsWholeWithoutAnArea();
    void itFollowsItsAreaWhereverItIsPut();
    void itDrawsNothingAtRest();
};

void LazyStackTest::onlyWhatIsNearExists_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {0, 1, 2, 9, 200, 10000})
        QTest::addRow("%d", count) << count;
}

void LazyStackTest::onlyWhatIsNearExists()
{
    QFETCH(int, count);
    Rows rows(count);
    Shelf shelf(&rows);
    QCOMPARE(shelf.row->width(), std::max(0.0, count * pitch - 40));
    for (const qreal position : {0.0, 1000.0, 1e9, 3000.0}) {
        shelf.area->reveal(position, position + 1, true);
        const qreal first = shelf.area->position() - ahead - 6;
        const qreal last = shelf.area->position() + room + ahead - 6;
        QList<int> near;
        for (int i = 0; i < count; ++i) {
            const bool isAtPlace = i < 2; // and the one beside it
            if (isAtPlace || (i * pitch + extent > first && i * pitch < last))
                near.append(i);
        }
        QTRY_COMPARE(shelf.existing(), near);
        QCOMPARE(shelf.row->existing(), near.size());
        for (const int i : near)
            QCOMPARE(shelf.row->itemAt(i)->x(), i * pitch);
    }
}

void LazyStackTest::aWalkFindsEveryRow_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {2, 20, 200})
        QTest::addRow("%d", count) << count;
}

void LazyStackTest::aWalkFindsEveryRow()
{
    QFETCH(int, count);
    Rows rows(count);
    Shelf shelf(&rows);
    QCOMPARE(shelf.focusedTitle(), u"0, round 0"_s);
    // At the end of a burst both the place and what is still shown may be seen.
    constexpr int most = int(2 * (room + 2 * ahead) / pitch) + 6;
    for (const int arrow : {Qt::Key_Right, Qt::Key_Left}) {
        for (int step = 1; step <= count; ++step) {
            shelf.stage.press(arrow);
            const int last = std::min(step, count - 1);
            const int at = arrow == Qt::Key_Right ? last : count - 1 - last;
            QCOMPARE(shelf.focusedTitle(), u"%1, round 0"_s.arg(at));
            QCOMPARE(rows.place(), at);
            QVERIFY(shelf.row->existing() <= most);
            const qreal x = shelf.screen->focused()->x() + 6 - shelf.area->aim();
            QVERIFY(x >= 0 && x + extent <= room);
            if (step % 7 == 0)
                QTest::qWait(20);
        }
    }
    QTRY_COMPARE(shelf.area->position(), shelf.area->aim());
}

void LazyStackTest::whatIsInSightIsMadeAtOnceAndTheRestInTime()
{
    Rows rows(200);
    Shelf shelf(&rows);
    shelf.area->reveal(100 * pitch, 100 * pitch + extent, true);
    const QList<int> atOnce = shelf.existing();
    QCOMPARE(atOnce, (QList<int>{0, 1, 94, 95, 96, 97, 98, 99, 100}));
    const QList<int> inTime{0, 1, 92, 93, 94, 95, 96, 97, 98, 99, 100, 101, 102};
    QTRY_COMPARE(shelf.existing(), inTime);
    shelf.stage.settle();
    QCOMPARE(shelf.existing(), inTime);
}

void LazyStackTest::aLongScrollMakesOnlyWhatItPasses()
{
    Rows rows(10000);
    Shelf shelf(&rows);
    shelf.area->reveal(5000 * pitch, 5001 * pitch);
    QVERIFY(shelf.row->itemAt(4998)); // where it will be seen, so that a key may go on from there
    int most = 0;
    connect(shelf.area, &ScrollArea::positionChanged, this, [&] { most = std::max(most, shelf.row->existing()); });
    QTRY_COMPARE(shelf.area->position(), shelf.area->aim());
    QVERIFY(most <= 25);
}

void LazyStackTest::rowsOfRowsFillWhenTheyAreInSight()
{
    Rows rows(20);
    Shelf shelf(&rows);
    auto column = static_cast<LazyStack*>(
        Stage::first(shelf.stage.put(u"FocusScreen { id: screen; width: 1920; height: 1080; property var rows;"
                                     "  ScrollArea { width: 1920; height: 1000; contentExtent: 10000;"
                                     "    LazyStack { extent: 500; ahead: 1500; model: screen.rows;"
                                     "      delegate: FocusSection { id: line; width: 1920; height: 500;"
                                     "        ScrollArea { width: 1780; height: 400; orientation: Qt.Horizontal;"
                                     "          LazyStack { orientation: Qt.Horizontal; extent: 250; spacing: 40;"
                                     "            model: screen.rows; delegate: Focusable { } } } } } } }"_s,
                                     {{u"rows"_s, QVariant::fromValue<QObject*>(&rows)}}),
                     "LazyStack"));
    const auto cards = [column](int row) {
        QQuickItem* line = column->itemAt(row);
        return line ? static_cast<LazyStack*>(Stage::first(line, "LazyStack"))->existing() : -1;
    };
    // In time all that exist are full; but not before.
    QTRY_COMPARE(cards(4), 7);
    NoAheadInRows noAhead;
    column->setPlace(10);
    QCOMPARE(cards(10), 7);
    QCOMPARE(cards(11), 7);
    QCOMPARE(cards(12), -1);
    auto area = static_cast<ScrollArea*>(column->parentItem()->parentItem());
    area->reveal(5000, 5500);
    QCOMPARE(cards(9), 7);
    QTRY_COMPARE(cards(13), 0);
    area->reveal(6500, 7000);
    QCOMPARE(cards(13), 7);
}

void LazyStackTest::rowsHaveTheirOwnExtents()
{
    Rows rows(4);
    rows.setExtents({100, 1, 2000, 50});
    Shelf shelf(&rows);
    QCOMPARE(shelf.row->implicitWidth(), 2151 + 3 * 40);
    QTRY_COMPARE(shelf.existing(), (QList<int>{0, 1, 2, 3}));
    QList<qreal> places;
    for (int i = 0; i < 4; ++i)
        places.append(shelf.row->itemAt(i)->x());
    QCOMPARE(places, (QList<qreal>{0, 140, 181, 2221}));
}

void LazyStackTest::itIsWholeWithoutAnArea()
{
    Rows rows(200);
    LazyStack stack;
    Shelf shelf(&rows);
    stack.setDelegate(shelf.row->delegate());
    stack.setExtent(100);
    stack.setModel(&rows);
    QCOMPARE(stack.implicitHeight(), 20000.0);
    QCOMPARE(stack.existing(), 0);
}

void LazyStackTest::itFollowsItsAreaWhereverItIsPut()
{
    Rows rows(200);
    Shelf shelf(&rows);
    QQuickItem outside;
    shelf.row->setParentItem(&outside);
    QCOMPARE(shelf.row->existing(), 2); // its place and the one beside
    auto between = new QQuickItem(shelf.area->contentItem());
    shelf.row->setParentItem(between);
    QTRY_COMPARE(shelf.row->existing(), 9);
    between->setX(-100 * pitch);
    QTRY_COMPARE(shelf.row->existing(), 11 + 2);
    QVERIFY(shelf.row->itemAt(103));
    shelf.area->setWidth(290);
    QTRY_COMPARE(shelf.row->existing(), 6 + 2);
}

void LazyStackTest::itDrawsNothingAtRest()
{
    Rows rows(200);
    Shelf shelf(&rows);
    shelf.stage.press(Qt::Key_Right);
    shelf.stage.settle();
    const int frames = shelf.stage.frames();
    QTest::qWait(300);
    QCOMPARE(shelf.stage.frames(), frames);
}

QTEST_MAIN(LazyStackTest)
#include "LazyStackTest.moc"
