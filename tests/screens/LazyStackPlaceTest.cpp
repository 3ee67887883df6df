#include "LazyStackStage.h"

#include <QSignalSpy>

/** The viewer's place in a row, and the focus that follows it. */
class LazyStackPlaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFocusGoesWhereThePlaceIs_data();
    void theFocusGoesWhereThePlaceIs();
    void aFocusElsewhereStaysThere();
    void whatMovedUnderTheFocusStaysInSight_data();
    void whatMovedUnderTheFocusStaysInSight();
    void withoutTheFocusTheRowAtThePlaceIsInView_data();
    void withoutTheFocusTheRowAtThePlaceIsInView();
    void whatHasTheFocusBesideTheStackStaysInView();
    void aStackThatBeginsAnewIsNotEnteredWhereItWasLeft();
    void whetherTheFocusIsHereIsTold();
    void theViewersMoveIsToldOnce();
    void theSectionIsEnteredAtThePlace();
    void aRowMadeAnewStandsAtItsPlaceAtOnce();
    void aPlacePastTheEndIsNone();
};

void LazyStackPlaceTest::theFocusGoesWhereThePlaceIs_data()
{
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<int>("place");
    QTest::addColumn<QString>("focused");
    const auto letters = [](const QString& keys) { return keys.split(QString(), Qt::SkipEmptyParts); };
    // Before: abcde, with the focus on c.
    QTest::newRow("nothing changes") << letters(u"abcde"_s) << 2 << u"c"_s;
    QTest::newRow("others come before") << letters(u"xyzabcde"_s) << 5 << u"c"_s;
    QTest::newRow("others go") << letters(u"cde"_s) << 0 << u"c"_s;
    QTest::newRow("the order changes") << letters(u"edcba"_s) << 2 << u"c"_s;
    QTest::newRow("it becomes the last") << letters(u"abdec"_s) << 4 << u"c"_s;
    QTest::newRow("it goes") << letters(u"abde"_s) << 2 << u"d"_s;
    QTest::newRow("it goes with all after it") << letters(u"ab"_s) << 1 << u"b"_s;
    QTest::newRow("all others come") << letters(u"xyz"_s) << 1 << u"y"_s;
    QTest::newRow("the owner wants another") << letters(u"abcde"_s) << 0 << u"a"_s;
    QTest::newRow("the owner wants one far away") << letters(u"abcdefghijklmnopqrstuvwxyz"_s) << 25 << u"z"_s;
    QTest::newRow("none is left") << QStringList() << -1 << QString();
}

void LazyStackPlaceTest::theFocusGoesWhereThePlaceIs()
{
    QFETCH(QStringList, after);
    QFETCH(int, place);
    QFETCH(QString, focused);
    Rows rows(QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
    Shelf shelf(&rows);
    shelf.focusRow(2);
    QCOMPARE(rows.place(), 2);
    shelf.stage.settle();
    rows.change(after, place);
    QCOMPARE(rows.place(), place);
    if (focused.isEmpty()) {
        QTRY_COMPARE(shelf.screen->focused()->objectName(), u"below"_s);
        return;
    }
    // At once, so that the very next key finds it there.
    QCOMPARE(shelf.focusedTitle(), focused + u", round 1"_s);
    shelf.stage.settle();
    QCOMPARE(shelf.focusedTitle(), focused + u", round 1"_s);
    QCOMPARE(rows.place(), place);
    const qreal x = shelf.screen->focused()->x() + 6 - shelf.area->position();
    QVERIFY(x >= 0 && x + extent <= room);
}

void LazyStackPlaceTest::aFocusElsewhereStaysThere()
{
    Rows rows(QStringList{u"a"_s, u"b"_s, u"c"_s});
    Shelf shelf(&rows);
    auto below = shelf.screen->findChild<Focusable*>(u"below"_s);
    shelf.screen->focus(below);
    rows.change({u"x"_s, u"y"_s}, 1);
    QVERIFY(below->hasActiveFocus());
    rows.setPlace(0);
    QVERIFY(below->hasActiveFocus());
    rows.change({}, -1);
    shelf.stage.settle();
    QVERIFY(below->hasActiveFocus());
}

void LazyStackPlaceTest::whatMovedUnderTheFocusStaysInSight_data()
{
    QTest::addColumn<bool>("isSeen");
    QTest::newRow("while it is seen") << true;
    QTest::newRow("while another screen covers it") << false;
}

void LazyStackPlaceTest::whatMovedUnderTheFocusStaysInSight()
{
    QFETCH(bool, isSeen);
    Rows rows(3);
    Shelf shelf(&rows);
    shelf.focusRow(2);
    shelf.area->setVisible(isSeen);
    QStringList keys = rows.keys();
    for (int i = 100; i < 150; ++i)
        keys.prepend(QString::number(i));
    const QPointer<Focusable> focused = shelf.screen->focused();
    rows.change(keys, 52);
    QCOMPARE(shelf.screen->focused(), focused.data());
    QCOMPARE(focused->x(), 52 * pitch);
    QCOMPARE(shelf.area->position(), 52 * pitch + extent + 6 - room);
}

void LazyStackPlaceTest::withoutTheFocusTheRowAtThePlaceIsInView_data()
{
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<int>("place");
    const auto keys = [](int first, int count) {
        QStringList all;
        for (int key = first; key < first + count; ++key)
            all.append(QString::number(key));
        return all;
    };
    // Before: 13 rows, with the place at the last.
    QTest::newRow("others, from their beginning") << keys(100, 12) << -1;
    QTest::newRow("others, at the first") << keys(100, 12) << 0;
    QTest::newRow("others, at the last") << keys(100, 12) << 11;
    QTest::newRow("many others, in the midst") << keys(100, 200) << 100;
    QTest::newRow("others that all have room") << keys(100, 3) << 2;
    QTest::newRow("some are left, from their beginning") << keys(0, 12) << -1;
    QTest::newRow("more come before") << keys(0, 13) + keys(13, 40) << 5;
    QTest::newRow("the same, from their beginning") << keys(0, 13) << -1;
    QTest::newRow("the same, at another place") << keys(0, 13) << 3;
}

void LazyStackPlaceTest::withoutTheFocusTheRowAtThePlaceIsInView()
{
    QFETCH(QStringList, after);
    QFETCH(int, place);
    Rows rows(13);
    Shelf shelf(&rows);
    for (int row = 1; row < 13; ++row)
        shelf.stage.press(Qt::Key_Right);
    shelf.screen->focus(shelf.screen->findChild<Focusable*>(u"below"_s));
    shelf.stage.settle();
    QCOMPARE(shelf.area->position(), 12 * pitch + extent + 6 - room);

    rows.change(after, place);
    const qreal position = shelf.area->position();
    const qreal x = 6 + std::max(place, 0) * pitch - position;
    QVERIFY2(x >= 0 && x + extent <= room, qPrintable(QString::number(x)));
    if (place < 0)
        QCOMPARE(position, 0.0);
    // Nothing moves then, and nothing when the focus comes.
    QCOMPARE(shelf.area->aim(), position);
    shelf.stage.settle();
    shelf.stage.press(Qt::Key_Up);
    QCOMPARE(shelf.focusedTitle(), u"%1, round 1"_s.arg(after.at(std::max(place, 0))));
    QCOMPARE(shelf.area->aim(), position);
}

void LazyStackPlaceTest::whatHasTheFocusBesideTheStackStaysInView()
{
    Rows rows(40);
    Stage stage;
    auto screen = static_cast<FocusScreen*>(
        stage.put(u"FocusScreen { id: screen; width: 1920; height: 1080; property var rows\n"
                  "ScrollArea { width: 800; height: 400; contentExtent: 150 + column.height\n"
                  "Focusable { objectName: 'above'; width: 300; height: 100 }\n"
                  "LazyStack { id: column; y: 150; extent: 250; spacing: 40; model: screen.rows\n"
                  "place: screen.rows.place; delegate: Focusable { width: 250; height: 250 } } }\n"
                  "Focusable { objectName: 'beside'; x: 900; width: 300; height: 100 } }"_s,
                  {{u"rows"_s, QVariant::fromValue<QObject*>(&rows)}}));
    auto area = static_cast<ScrollArea*>(Stage::first(screen, "ScrollArea"));
    screen->takeFocus();
    screen->focus(screen->findChild<Focusable*>(u"above"_s));
    rows.setPlace(20);
    QCOMPARE(area->aim(), 0.0);
    rows.change(rows.keys(), 30);
    QCOMPARE(area->aim(), 0.0);
    screen->focus(screen->findChild<Focusable*>(u"beside"_s));
    rows.setPlace(20);
    QCOMPARE(area->position(), 150 + 20 * pitch + extent - 400);
}

void LazyStackPlaceTest::aStackThatBeginsAnewIsNotEnteredWhereItWasLeft()
{
    Rows rows(13);
    Shelf shelf(&rows);
    shelf.focusRow(5);
    shelf.screen->focus(shelf.screen->findChild<Focusable*>(u"below"_s));
    rows.change(rows.keys(), -1);
    shelf.stage.press(Qt::Key_Up);
    QCOMPARE(shelf.focusedTitle(), u"0, round 1"_s);
}

void LazyStackPlaceTest::whetherTheFocusIsHereIsTold()
{
    Rows rows(3);
    Shelf shelf(&rows);
    auto below = shelf.screen->findChild<Focusable*>(u"below"_s);
    QVERIFY(shelf.row->containsFocus());
    QSignalSpy told(shelf.row, &LazyStack::containsFocusChanged);
    shelf.stage.press(Qt::Key_Right);
    QCOMPARE(told.count(), 0);
    shelf.stage.press(Qt::Key_Down);
    QCOMPARE(told.count(), 1);
    QVERIFY(!shelf.row->containsFocus());
    shelf.stage.press(Qt::Key_Up);
    QCOMPARE(told.count(), 2);
    // Others in the place of the focused one, in one change.
    rows.change({u"x"_s, u"y"_s}, 1);
    QCOMPARE(told.count(), 2);
    QVERIFY(shelf.row->containsFocus());
    rows.change({}, -1);
    QTRY_VERIFY(below->hasActiveFocus());
    QCOMPARE(told.count(), 3);
    QVERIFY(!shelf.row->containsFocus());
}

void LazyStackPlaceTest::theViewersMoveIsToldOnce()
{
    Rows rows(5);
    Shelf shelf(&rows);
    QSignalSpy held(shelf.row, &LazyStack::held);
    shelf.stage.press(Qt::Key_Right);
    QCOMPARE(held, QList<QVariantList>{{1}});
    shelf.screen->focus(static_cast<Focusable*>(shelf.row->itemAt(1)));
    rows.setPlace(3);
    QCOMPARE(shelf.focusedTitle(), u"3, round 0"_s);
    QCOMPARE(held.size(), 1);
}

void LazyStackPlaceTest::theSectionIsEnteredAtThePlace()
{
    Rows rows(200);
    Shelf shelf(&rows);
    auto section = static_cast<FocusSection*>(Stage::first(shelf.screen, "FocusSection"));
    shelf.screen->focus(shelf.screen->findChild<Focusable*>(u"below"_s));
    rows.setPlace(150);
    QCOMPARE(section->held(), static_cast<Focusable*>(shelf.row->itemAt(150)));
    shelf.stage.press(Qt::Key_Up);
    QCOMPARE(shelf.focusedTitle(), u"150, round 0"_s);
}

void LazyStackPlaceTest::aRowMadeAnewStandsAtItsPlaceAtOnce()
{
    Rows rows(200);
    rows.setPlace(100);
    Shelf shelf(&rows, u"Item { }"_s);
    QQmlComponent component(&shelf.stage.engine());
    component.setData(
        ("import QtQuick\nimport Quillmere.Screen\nScrollArea { id: area; property var rows; property list<real> stops;"
         "  x: 70; width: 1780; height: 400; orientation: Qt.Horizontal; contentExtent: line.width + 12; lead: 100;"
         "  onPositionChanged: stops.push(position);"
         "  LazyStack { id: line; x: 6; orientation: Qt.Horizontal; extent: 250; spacing: 40; ahead: 600;"
         "    model: area.rows; place: 100; delegate: Focusable { width: 250; height: 390 } } }"),
        {});
    std::unique_ptr<QObject> made(
        component.createWithInitialProperties({{u"rows"_s, QVariant::fromValue<QObject*>(&rows)}}));
    auto area = qobject_cast<ScrollArea*>(made.get());
    QVERIFY2(area, qPrintable(component.errorString()));
    QCOMPARE(area->position(), 100 * pitch + extent + 6 + 100 - room);
    area->setParentItem(shelf.screen);
    shelf.stage.settle();
    QCOMPARE(area->position(), 100 * pitch + extent + 6 + 100 - room);
    QVERIFY(!static_cast<LazyStack*>(Stage::first(area, "LazyStack"))->itemAt(0));
}

void LazyStackPlaceTest::aPlacePastTheEndIsNone()
{
    Rows rows(3);
    Shelf shelf(&rows);
    shelf.focusRow(1);
    rows.setPlace(1000);
    QCOMPARE(shelf.focusedTitle(), u"1, round 0"_s);
    rows.change({u"x"_s, u"y"_s}, 1000);
    QTRY_VERIFY(shelf.focusedTitle().endsWith(u"round 1"_s));
    rows.change({u"x"_s, u"y"_s}, -7);
    QCOMPARE(shelf.row->existing(), 2);
}

QTEST_MAIN(LazyStackPlaceTest)
#include "LazyStackPlaceTest.moc"
