#include "LazyStackFixture.h"
#include "TestMain.h"

namespace quillmere {

namespace {

constexpr qreal estimate = 250;

// Ten items always fill the viewport, and each width differs from the estimate and from its neighbours' widths.
const QString measuredStack =
    u"LazyStack { x: 6; orientation: Qt.Horizontal; measured: true; extent: 250; spacing: 40; cacheBuffer: 600;"
    "  model: screen.rows;"
    "  delegate: Focusable { required property int index; required property string title;"
    "    width: 100 + 50 * (index % 7); height: 390 } }"_s;

qreal widthOf(int row)
{
    return 100 + 50 * (row % 7);
}

qreal beginOf(int row)
{
    qreal begin = 0;
    for (int before = 0; before < row; ++before)
        begin += widthOf(before) + 40;
    return begin;
}

} // namespace

/** A stack whose item extents are known only after the items are created. */
class LazyStackMeasuredTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void extentOfRowIsThatOfItsItemAndOtherwiseEstimated()
    {
        const RowsFixture fixture(100, measuredStack);
        int found = 0;
        QTRY_VERIFY(std::exchange(found, fixture.row->itemCount()) == fixture.row->itemCount());
        QCOMPARE(fixture.existing().size(), fixture.existing().constLast() + 1);
        for (const int row : fixture.existing()) {
            QCOMPARE(fixture.row->itemAt(row)->x(), beginOf(row));
            QCOMPARE(fixture.row->itemAt(row)->width(), widthOf(row));
        }
        QCOMPARE(fixture.row->implicitWidth(), beginOf(found) + (100 - found) * (estimate + 40) - 40);
        QCOMPARE(fixture.area->contentExtent(), fixture.row->implicitWidth() + 12);
    }

    void visibleItemsAreCreatedEvenIfVeryShort()
    {
        Rows rows(100);
        const auto tiny = QString(measuredStack).replace(u"100 + 50 * (index % 7)"_s, u"20"_s);
        const LazyStackFixture fixture(&rows, tiny);
        // Immediately, so that no frame shows a missing row.
        QVERIFY(fixture.row->itemAt(int(viewportExtent / 60)));
    }

    void focusMovesThroughMeasuredRowsAndBack()
    {
        RowsFixture fixture(300, measuredStack);
        for (int row = 0; row < 299; ++row) {
            QCOMPARE(fixture.focusedTitle(), fixture.rows.data(fixture.rows.index(row), Rows::TitleRole).toString());
            QCOMPARE(fixture.screen->focused()->x(), beginOf(row));
            QCOMPARE(fixture.screen->focused()->width(), widthOf(row));
            QVERIFY(fixture.isFocusVisible(fixture.area->targetPosition()));
            QVERIFY(fixture.screen->move(Qt::Key_Right));
        }
        QCOMPARE(fixture.row->implicitWidth(), beginOf(300) - 40);
        // A measured extent is kept after the item is destroyed.
        QTRY_VERIFY(!fixture.row->itemAt(100));
        for (int row = 299; row > 0; --row) {
            QCOMPARE(fixture.screen->focused()->x(), beginOf(row));
            fixture.screen->move(Qt::Key_Left);
        }
        QCOMPARE(fixture.row->implicitWidth(), beginOf(300) - 40);
    }

    void grownItemShiftsItemsAfterIt()
    {
        RowsFixture fixture(100, measuredStack);
        fixture.row->itemAt(1)->setWidth(widthOf(1) + 33);
        QCOMPARE(fixture.row->itemAt(0)->x(), 0);
        QCOMPARE(fixture.row->itemAt(1)->x(), beginOf(1));
        for (const int row : {2, 3, 4})
            QCOMPARE(fixture.row->itemAt(row)->x(), beginOf(row) + 33);
    }

    void changedModelIsMeasuredAgain()
    {
        RowsFixture fixture(100, measuredStack);
        fixture.rows.change(fixture.rows.keys().mid(50), 0);
        for (const int row : fixture.existing())
            QCOMPARE(fixture.row->itemAt(row)->x(), beginOf(row));
    }
};

QUILLMERE_TEST(LazyStackMeasuredTest, QGuiApplication)

} // namespace quillmere

#include "LazyStackMeasuredTest.moc"
