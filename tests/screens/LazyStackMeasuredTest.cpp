#include "LazyStackStage.h"

namespace {

constexpr qreal guess = 250;

// Wide enough that ten of them fill the room, and each of another width than the guess and its neighbours.
constexpr auto measuredStack =
    u"LazyStack { x: 6; orientation: Qt.Horizontal; measured: true; extent: 250; spacing: 40; ahead: 600;"
    "  model: screen.rows; onHeld: row => place = row;"
    "  delegate: Focusable { required property int index; required property string title;"
    "    width: 100 + 50 * (index % 7); height: 390 } }";

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

/** A row of items whose lengths are known only when they are made. */
class LazyStackMeasuredTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreAsLongAsTheirItems();
    void theRestCountsAsItIsGuessed();
    void whatIsInSightIsMadeHoweverShortItIs();
    void aWalkStandsOnWhatWasFound();
    void whatWasFoundIsKeptWhenItsItemHasGone();
    void anItemThatGrowsMovesThoseBehindIt();
    void anotherModelIsMeasuredAnew();
};

void LazyStackMeasuredTest::rowsAreAsLongAsTheirItems()
{
    Rows rows(100);
    const Shelf shelf(&rows, QString::fromUtf16(measuredStack));
    for (const int row : shelf.existing()) {
        QCOMPARE(shelf.row->itemAt(row)->x(), beginOf(row));
        QCOMPARE(shelf.row->itemAt(row)->width(), widthOf(row));
    }
}

void LazyStackMeasuredTest::theRestCountsAsItIsGuessed()
{
    Rows rows(100);
    const Shelf shelf(&rows, QString::fromUtf16(measuredStack));
    int found = 0;
    QTRY_VERIFY(std::exchange(found, shelf.row->existing()) == shelf.row->existing());
    QCOMPARE(shelf.existing().size(), shelf.existing().constLast() + 1);
    QCOMPARE(shelf.row->implicitWidth(), beginOf(found) + (100 - found) * (guess + 40) - 40);
    QCOMPARE(shelf.area->contentExtent(), shelf.row->implicitWidth() + 12);
}

void LazyStackMeasuredTest::whatIsInSightIsMadeHoweverShortItIs()
{
    Rows rows(100);
    const auto tiny = QString::fromUtf16(measuredStack).replace(u"100 + 50 * (index % 7)"_s, u"20"_s);
    const Shelf shelf(&rows, tiny);
    // At once, as nobody is to see a row that is not there.
    QVERIFY(shelf.row->itemAt(int(room / 60)));
}

void LazyStackMeasuredTest::aWalkStandsOnWhatWasFound()
{
    Rows rows(300);
    Shelf shelf(&rows, QString::fromUtf16(measuredStack));
    for (int row = 0; row < 299; ++row) {
        QCOMPARE(shelf.focusedTitle(), rows.data(rows.index(row), Rows::TitleRole).toString());
        QCOMPARE(shelf.screen->focused()->x(), beginOf(row));
        const qreal begin = beginOf(row) + 6 - shelf.area->aim();
        QVERIFY(begin >= 0 && begin + widthOf(row) <= room);
        QVERIFY(shelf.screen->move(Qt::Key_Right));
    }
    QCOMPARE(shelf.row->implicitWidth(), beginOf(300) - 40);
}

void LazyStackMeasuredTest::whatWasFoundIsKeptWhenItsItemHasGone()
{
    Rows rows(300);
    Shelf shelf(&rows, QString::fromUtf16(measuredStack));
    for (int row = 0; row < 299; ++row)
        shelf.screen->move(Qt::Key_Right);
    QTRY_VERIFY(!shelf.row->itemAt(100));
    for (int row = 299; row > 0; --row) {
        QCOMPARE(shelf.screen->focused()->x(), beginOf(row));
        shelf.screen->move(Qt::Key_Left);
    }
    QCOMPARE(shelf.row->implicitWidth(), beginOf(300) - 40);
}

void LazyStackMeasuredTest::anItemThatGrowsMovesThoseBehindIt()
{
    Rows rows(100);
    Shelf shelf(&rows, QString::fromUtf16(measuredStack));
    shelf.row->itemAt(1)->setWidth(widthOf(1) + 33);
    QCOMPARE(shelf.row->itemAt(0)->x(), 0);
    QCOMPARE(shelf.row->itemAt(1)->x(), beginOf(1));
    for (const int row : {2, 3, 4})
        QCOMPARE(shelf.row->itemAt(row)->x(), beginOf(row) + 33);
}

void LazyStackMeasuredTest::anotherModelIsMeasuredAnew()
{
    Rows rows(100);
    Shelf shelf(&rows, QString::fromUtf16(measuredStack));
    rows.change(rows.keys().mid(50), 0);
    for (const int row : shelf.existing())
        QCOMPARE(shelf.row->itemAt(row)->x(), beginOf(row));
}

QTEST_MAIN(LazyStackMeasuredTest)
#include "LazyStackMeasuredTest.moc"
