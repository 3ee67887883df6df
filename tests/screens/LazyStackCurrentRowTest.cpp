#include "LazyStackFixture.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

/** The current row of a stack, and the focus that follows it. */
class LazyStackCurrentRowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void focusMovesToCurrentRowWhenModelChanges_data();
    void focusMovesToCurrentRowWhenModelChanges();
    void focusOutsideStackIsKept();
    void focusedItemStaysVisibleWhenItMoves_data();
    void focusedItemStaysVisibleWhenItMoves();
    void currentRowIsVisibleWhenFocusIsElsewhere_data();
    void currentRowIsVisibleWhenFocusIsElsewhere();
    void focusedItemNextToStackStaysVisible();
    void stackWithoutCurrentRowIsEnteredAtFirstRow();
    void hasFocusChangesOnceAsFocusEntersOrLeaves();
    void currentRowChangesOncePerKeyPress();
    void sectionIsEnteredAtCurrentRow();
    void sectionIsEnteredBesideDisabledCurrentRow();
    void newStackStartsAtCurrentRowWithoutScrolling();
    void currentRowOutOfRangeIsIgnored();
};

void LazyStackCurrentRowTest::focusMovesToCurrentRowWhenModelChanges_data()
{
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<int>("currentRow");
    QTest::addColumn<QString>("focused");
    const auto letters = [](const QString& keys) { return keys.split(QString(), Qt::SkipEmptyParts); };
    // The rows before are abcde, with the focus on c.
    QTest::newRow("nothing changes") << letters(u"abcde"_s) << 2 << u"c"_s;
    QTest::newRow("rows inserted before") << letters(u"xyzabcde"_s) << 5 << u"c"_s;
    QTest::newRow("rows before removed") << letters(u"cde"_s) << 0 << u"c"_s;
    QTest::newRow("order reversed") << letters(u"edcba"_s) << 2 << u"c"_s;
    QTest::newRow("moved to the end") << letters(u"abdec"_s) << 4 << u"c"_s;
    QTest::newRow("removed") << letters(u"abde"_s) << 2 << u"d"_s;
    QTest::newRow("removed with all after it") << letters(u"ab"_s) << 1 << u"b"_s;
    QTest::newRow("all rows replaced") << letters(u"xyz"_s) << 1 << u"y"_s;
    QTest::newRow("owner sets another row") << letters(u"abcde"_s) << 0 << u"a"_s;
    QTest::newRow("owner sets a distant row") << letters(u"abcdefghijklmnopqrstuvwxyz"_s) << 25 << u"z"_s;
    QTest::newRow("all rows removed") << QStringList() << -1 << QString();
}

void LazyStackCurrentRowTest::focusMovesToCurrentRowWhenModelChanges()
{
    QFETCH(QStringList, after);
    QFETCH(int, currentRow);
    QFETCH(QString, focused);
    Rows rows(QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
    LazyStackFixture fixture(&rows);
    fixture.focusRow(2);
    QCOMPARE(rows.currentRow(), 2);
    fixture.waitUntilIdle();
    rows.change(after, currentRow);
    QCOMPARE(rows.currentRow(), currentRow);
    if (focused.isEmpty()) {
        QTRY_COMPARE(fixture.screen->focused()->objectName(), u"below"_s);
        return;
    }
    // Immediately, so that the next key already acts on that row.
    QCOMPARE(fixture.focusedTitle(), focused + u", round 1"_s);
    fixture.waitUntilIdle();
    QCOMPARE(fixture.focusedTitle(), focused + u", round 1"_s);
    QCOMPARE(rows.currentRow(), currentRow);
    const qreal x = fixture.screen->focused()->x() + 6 - fixture.area->position();
    QVERIFY(x >= 0 && x + extent <= viewportExtent);
}

void LazyStackCurrentRowTest::focusOutsideStackIsKept()
{
    Rows rows(QStringList{u"a"_s, u"b"_s, u"c"_s});
    LazyStackFixture fixture(&rows);
    auto below = fixture.screen->findChild<Focusable*>(u"below"_s);
    fixture.screen->focus(below);
    rows.change({u"x"_s, u"y"_s}, 1);
    QVERIFY(below->hasActiveFocus());
    rows.setCurrentRow(0);
    QVERIFY(below->hasActiveFocus());
    rows.change({}, -1);
    fixture.waitUntilIdle();
    QVERIFY(below->hasActiveFocus());
}

void LazyStackCurrentRowTest::focusedItemStaysVisibleWhenItMoves_data()
{
    QTest::addColumn<bool>("isSeen");
    QTest::newRow("visible") << true;
    QTest::newRow("hidden") << false;
}

void LazyStackCurrentRowTest::focusedItemStaysVisibleWhenItMoves()
{
    QFETCH(bool, isSeen);
    Rows rows(3);
    LazyStackFixture fixture(&rows);
    fixture.focusRow(2);
    fixture.area->setVisible(isSeen);
    QStringList keys = rows.keys();
    for (int i = 100; i < 150; ++i)
        keys.prepend(QString::number(i));
    const QPointer<Focusable> focused = fixture.screen->focused();
    rows.change(keys, 52);
    QCOMPARE(fixture.screen->focused(), focused.data());
    QCOMPARE(focused->x(), 52 * pitch);
    QCOMPARE(fixture.area->position(), 52 * pitch + extent + 6 - viewportExtent);
}

void LazyStackCurrentRowTest::currentRowIsVisibleWhenFocusIsElsewhere_data()
{
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<int>("currentRow");
    const auto keys = [](int first, int count) {
        QStringList all;
        for (int key = first; key < first + count; ++key)
            all.append(QString::number(key));
        return all;
    };
    // Before: 13 rows; the current row is the last.
    QTest::newRow("all replaced, no current row") << keys(100, 12) << -1;
    QTest::newRow("all replaced, first is current") << keys(100, 12) << 0;
    QTest::newRow("all replaced, last is current") << keys(100, 12) << 11;
    QTest::newRow("all replaced by many, middle is current") << keys(100, 200) << 100;
    QTest::newRow("all replaced by few that fit") << keys(100, 3) << 2;
    QTest::newRow("last row removed, no current row") << keys(0, 12) << -1;
    QTest::newRow("rows appended, another is current") << keys(0, 13) + keys(13, 40) << 5;
    QTest::newRow("same rows, no current row") << keys(0, 13) << -1;
    QTest::newRow("same rows, another is current") << keys(0, 13) << 3;
}

void LazyStackCurrentRowTest::currentRowIsVisibleWhenFocusIsElsewhere()
{
    QFETCH(QStringList, after);
    QFETCH(int, currentRow);
    Rows rows(13);
    LazyStackFixture fixture(&rows);
    for (int row = 1; row < 13; ++row)
        fixture.press(Qt::Key_Right);
    fixture.screen->focus(fixture.screen->findChild<Focusable*>(u"below"_s));
    fixture.waitUntilIdle();
    QCOMPARE(fixture.area->position(), 12 * pitch + extent + 6 - viewportExtent);

    rows.change(after, currentRow);
    const qreal position = fixture.area->position();
    const qreal x = 6 + std::max(currentRow, 0) * pitch - position;
    QVERIFY2(x >= 0 && x + extent <= viewportExtent, qPrintable(QString::number(x)));
    if (currentRow < 0)
        QCOMPARE(position, 0.0);
    // Nothing scrolls now, and nothing scrolls when the focus arrives.
    QCOMPARE(fixture.area->targetPosition(), position);
    fixture.waitUntilIdle();
    fixture.press(Qt::Key_Up);
    QCOMPARE(fixture.focusedTitle(), u"%1, round 1"_s.arg(after.at(std::max(currentRow, 0))));
    QCOMPARE(fixture.area->targetPosition(), position);
}

void LazyStackCurrentRowTest::focusedItemNextToStackStaysVisible()
{
    Rows rows(40);
    TestScreen fixture;
    auto screen = static_cast<FocusScreen*>(
        fixture.load(u"FocusScreen { id: screen; width: 1920; height: 1080; property var rows\n"
                     "ScrollArea { width: 800; height: 400; contentExtent: 150 + column.height\n"
                     "Focusable { objectName: 'above'; width: 300; height: 100 }\n"
                     "LazyStack { id: column; y: 150; extent: 250; spacing: 40; model: screen.rows\n"
                     "delegate: Focusable { width: 250; height: 250 } } }\n"
                     "Focusable { objectName: 'beside'; x: 900; width: 300; height: 100 } }"_s,
                     {{u"rows"_s, QVariant::fromValue<QObject*>(&rows)}}));
    auto area = static_cast<ScrollArea*>(TestScreen::first(screen, "ScrollArea"));
    screen->acquireFocus();
    screen->focus(screen->findChild<Focusable*>(u"above"_s));
    rows.setCurrentRow(20);
    QCOMPARE(area->targetPosition(), 0.0);
    rows.change(rows.keys(), 30);
    QCOMPARE(area->targetPosition(), 0.0);
    screen->focus(screen->findChild<Focusable*>(u"beside"_s));
    rows.setCurrentRow(20);
    QCOMPARE(area->position(), 150 + 20 * pitch + extent - 400);
}

void LazyStackCurrentRowTest::stackWithoutCurrentRowIsEnteredAtFirstRow()
{
    Rows rows(13);
    LazyStackFixture fixture(&rows);
    fixture.focusRow(5);
    fixture.screen->focus(fixture.screen->findChild<Focusable*>(u"below"_s));
    rows.change(rows.keys(), -1);
    fixture.press(Qt::Key_Up);
    QCOMPARE(fixture.focusedTitle(), u"0, round 1"_s);
}

void LazyStackCurrentRowTest::hasFocusChangesOnceAsFocusEntersOrLeaves()
{
    Rows rows(3);
    LazyStackFixture fixture(&rows);
    auto below = fixture.screen->findChild<Focusable*>(u"below"_s);
    QVERIFY(rows.hasFocus());
    QSignalSpy changes(&rows, &CurrentRowModel::hasFocusChanged);
    fixture.press(Qt::Key_Right);
    QCOMPARE(changes.count(), 0);
    fixture.press(Qt::Key_Down);
    QCOMPARE(changes.count(), 1);
    QVERIFY(!rows.hasFocus());
    fixture.press(Qt::Key_Up);
    QCOMPARE(changes.count(), 2);
    // One change replaces the focused row and all others.
    rows.change({u"x"_s, u"y"_s}, 1);
    QCOMPARE(changes.count(), 2);
    QVERIFY(rows.hasFocus());
    rows.change({}, -1);
    QTRY_VERIFY(below->hasActiveFocus());
    QCOMPARE(changes.count(), 3);
    QVERIFY(!rows.hasFocus());
}

void LazyStackCurrentRowTest::currentRowChangesOncePerKeyPress()
{
    Rows rows(5);
    LazyStackFixture fixture(&rows);
    QCOMPARE(rows.currentRow(), 0);
    const QSignalSpy changes(&rows, &CurrentRowModel::currentRowChanged);
    fixture.press(Qt::Key_Right);
    QCOMPARE(rows.currentRow(), 1);
    QCOMPARE(changes.count(), 1);
    fixture.screen->focus(static_cast<Focusable*>(fixture.row->itemAt(1)));
    QCOMPARE(changes.count(), 1);
    rows.setCurrentRow(3);
    QCOMPARE(fixture.focusedTitle(), u"3, round 0"_s);
    QCOMPARE(changes.count(), 2);
}

void LazyStackCurrentRowTest::sectionIsEnteredBesideDisabledCurrentRow()
{
    Rows rows(13);
    LazyStackFixture fixture(&rows);
    fixture.press(Qt::Key_Down);
    fixture.row->itemAt(0)->setEnabled(false);
    fixture.press(Qt::Key_Up);
    QCOMPARE(fixture.focusedTitle(), u"1, round 0"_s);
}

void LazyStackCurrentRowTest::sectionIsEnteredAtCurrentRow()
{
    Rows rows(200);
    LazyStackFixture fixture(&rows);
    auto section = static_cast<FocusSection*>(TestScreen::first(fixture.screen, "FocusSection"));
    fixture.screen->focus(fixture.screen->findChild<Focusable*>(u"below"_s));
    rows.setCurrentRow(150);
    QCOMPARE(section->current(), static_cast<Focusable*>(fixture.row->itemAt(150)));
    fixture.press(Qt::Key_Up);
    QCOMPARE(fixture.focusedTitle(), u"150, round 0"_s);
}

void LazyStackCurrentRowTest::newStackStartsAtCurrentRowWithoutScrolling()
{
    Rows rows(200);
    rows.setCurrentRow(100);
    LazyStackFixture fixture(&rows, u"Item { }"_s);
    QQmlComponent component(&fixture.engine());
    component.setData(
        ("import QtQuick\nimport Quillmere.Screen\nScrollArea { id: area; property var rows; property list<real> stops;"
         "  x: 70; width: 1780; height: 400; orientation: Qt.Horizontal; contentExtent: line.width + 12; revealMargin: "
         "100;"
         "  onPositionChanged: stops.push(position);"
         "  LazyStack { id: line; x: 6; orientation: Qt.Horizontal; extent: 250; spacing: 40; cacheBuffer: 600;"
         "    model: area.rows; delegate: Focusable { width: 250; height: 390 } } }"),
        {});
    std::unique_ptr<QObject> object(
        component.createWithInitialProperties({{u"rows"_s, QVariant::fromValue<QObject*>(&rows)}}));
    auto area = qobject_cast<ScrollArea*>(object.get());
    QVERIFY2(area, qPrintable(component.errorString()));
    QCOMPARE(area->position(), 100 * pitch + extent + 6 + 100 - viewportExtent);
    area->setParentItem(fixture.screen);
    fixture.waitUntilIdle();
    QCOMPARE(area->position(), 100 * pitch + extent + 6 + 100 - viewportExtent);
    QVERIFY(!static_cast<LazyStack*>(TestScreen::first(area, "LazyStack"))->itemAt(0));
}

void LazyStackCurrentRowTest::currentRowOutOfRangeIsIgnored()
{
    Rows rows(3);
    LazyStackFixture fixture(&rows);
    fixture.focusRow(1);
    rows.setCurrentRow(1000);
    QCOMPARE(fixture.focusedTitle(), u"1, round 0"_s);
    rows.change({u"x"_s, u"y"_s}, 1000);
    QTRY_VERIFY(fixture.focusedTitle().endsWith(u"round 1"_s));
    rows.change({u"x"_s, u"y"_s}, -7);
    QCOMPARE(fixture.row->itemCount(), 2);
}

QUILLMERE_TEST(LazyStackCurrentRowTest, QGuiApplication)

} // namespace quillmere

#include "LazyStackCurrentRowTest.moc"
