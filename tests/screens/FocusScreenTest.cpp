#include "FocusStage.h"

#include "FocusSection.h"
#include "LazyStack.h"
#include "ScrollArea.h"

#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/** Where the arrows lead, and what select does. */
class FocusScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anArrowLeadsToTheNearest_data();
    void anArrowLeadsToTheNearest();
    void aSectionIsATargetByItsWholeArea();
    void aSectionIsEnteredAtTheNearestAndThenWhereItWasLeft();
    void aSectionThatBeginsAtItsFirstIsEnteredThereAndThenWhereItWasLeft();
    void aSectionWhoseHeldThingIsGoneIsEnteredAtTheNearest();
    void aSectionWhoseThingsReachOutOfItIsEnteredAllTheSame();
    void aSectionIsLeftOnlyWhereItHasNothingMore();
    void theShortLastLineOfASectionIsReached();
    void anEmptySectionIsPassed();
    void whatCannotHoldTheFocusIsPassed();
    void theLiftOfACardDoesNotCount();
    void aScrollUnderWayCountsAsEnded();
    void theSectionComesIntoSightWhereItFits();
    void aThingInARowThatScrollsComesIntoSight();
    void theFirstFocusIsInSightAtOnce();
    void whatIsWhollyShownIsNotReadOn();
    void aStackIsToldOfTheRowThatHoldsTheFocus();
    void aThingTallerThanTheViewIsReadToItsEndFirst();
    void selectActsOnceAPress();
    void arrowsStayOnTheScreenAndBackLeavesIt();
};

void FocusScreenTest::anArrowLeadsToTheNearest_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<int>("arrow");
    QTest::addColumn<QString>("to");

    QTest::newRow("right") << u"a"_s << int(Qt::Key_Right) << u"b"_s;
    QTest::newRow("left") << u"b"_s << int(Qt::Key_Left) << u"a"_s;
    QTest::newRow("down") << u"a"_s << int(Qt::Key_Down) << u"c"_s;
    QTest::newRow("up") << u"c"_s << int(Qt::Key_Up) << u"a"_s;
    QTest::newRow("not quite opposite") << u"c"_s << int(Qt::Key_Right) << u"d"_s;
    QTest::newRow("the nearer of two") << u"e"_s << int(Qt::Key_Up) << u"d"_s;
    QTest::newRow("the one in the middle") << u"d"_s << int(Qt::Key_Down) << u"f"_s;
    QTest::newRow("nothing at the left end") << u"a"_s << int(Qt::Key_Left) << u"a"_s;
    QTest::newRow("nothing at the right end") << u"b"_s << int(Qt::Key_Right) << u"b"_s;
    QTest::newRow("nothing at the top") << u"b"_s << int(Qt::Key_Up) << u"b"_s;
    QTest::newRow("nothing at the bottom") << u"e"_s << int(Qt::Key_Down) << u"e"_s;
    QTest::newRow("nothing in the beam") << u"f"_s << int(Qt::Key_Right) << u"f"_s;
}

void FocusScreenTest::anArrowLeadsToTheNearest()
{
    QFETCH(QString, from);
    QFETCH(int, arrow);
    FocusStage stage;
    stage.walk(stage.thing("a", {0, 0, 100, 100}) + stage.thing("b", {200, 0, 100, 100}) +
               stage.thing("c", {0, 200, 100, 100}) + stage.thing("d", {200, 260, 100, 100}) +
               stage.thing("e", {0, 500, 220, 100}) + stage.thing("f", {225, 500, 100, 100}));
    QTEST(stage.after(from.toLatin1(), arrow), "to");
}

void FocusScreenTest::aSectionIsATargetByItsWholeArea()
{
    FocusStage stage;
    stage.walk(stage.thing("above", {0, 0, 100, 100}) +
               stage.item("FocusSection", "row", {0, 200, 1000, 100}, stage.thing("inRow", {800, 0, 100, 100})));
    QCOMPARE(stage.after("above", Qt::Key_Down), u"inRow"_s);
    QCOMPARE(stage.after("inRow", Qt::Key_Up), u"inRow"_s);
}

void FocusScreenTest::aSectionIsEnteredAtTheNearestAndThenWhereItWasLeft()
{
    FocusStage stage;
    const QString row = stage.thing("a", {0, 0, 100, 100}) + stage.thing("b", {200, 0, 100, 100}) +
                        stage.thing("c", {400, 0, 100, 100});
    stage.walk(stage.thing("above", {210, 0, 100, 100}) + stage.item("FocusSection", "row", {0, 200, 500, 100}, row));
    QCOMPARE(stage.after("above", Qt::Key_Down), u"b"_s);
    stage.press(Qt::Key_Left);
    QCOMPARE(stage.focused(), u"a"_s);
    QCOMPARE(stage.after("above", Qt::Key_Down), u"a"_s);
}

void FocusScreenTest::aSectionThatBeginsAtItsFirstIsEnteredThereAndThenWhereItWasLeft()
{
    FocusStage stage;
    const QString things = stage.thing("last", {310, 0, 100, 100}) + stage.thing("b", {200, 0, 100, 100}) +
                           stage.thing("a", {0, 0, 99, 99});
    stage.walk(stage.thing("above", {310, 0, 100, 100}) +
               stage.item("FocusSection", "row", {0, 200, 500, 100}, u"beginsAtFirst: true\n"_s + things));
    stage.press(Qt::Key_Down);
    QCOMPARE(stage.focused(), u"a"_s);
    stage.press(Qt::Key_Right);
    stage.press(Qt::Key_Up);
    stage.press(Qt::Key_Down);
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusScreenTest::aSectionWhoseHeldThingIsGoneIsEnteredAtTheNearest()
{
    FocusStage stage;
    const QString row = stage.thing("a", {0, 0, 100, 100}) + stage.thing("b", {200, 0, 100, 100});
    stage.walk(stage.thing("above", {210, 0, 100, 100}) + stage.item("FocusSection", "row", {0, 200, 500, 100}, row));
    stage.screen().focus(&stage.named("a"));
    stage.screen().focus(&stage.named("above"));
    stage.named("a").setEnabled(false);
    QCOMPARE(stage.named<FocusSection>("row").held(), nullptr);
    stage.press(Qt::Key_Down);
    QCOMPARE(stage.focused(), u"b"_s);
    stage.named("b").setParentItem(&stage.screen());
    QCOMPARE(stage.named<FocusSection>("row").held(), nullptr);
}

void FocusScreenTest::aSectionWhoseThingsReachOutOfItIsEnteredAllTheSame()
{
    FocusStage stage;
    const QString things = stage.thing("far", {-300, 0, 100, 100}) + stage.thing("near", {-150, 0, 100, 100});
    stage.walk(stage.thing("a", {0, 0, 100, 100}, "preferred: true") +
               stage.item("FocusSection", "row", {200, 0, 500, 100}, things));
    QCOMPARE(stage.after("a", Qt::Key_Right), u"near"_s);
}

void FocusScreenTest::aSectionIsLeftOnlyWhereItHasNothingMore()
{
    FocusStage stage;
    const QString row = stage.thing("a", {0, 0, 100, 100}) + stage.thing("b", {400, 0, 100, 100});
    // It stands nearer to the first thing than the second does.
    stage.walk(stage.item("FocusSection", "row", {0, 0, 500, 100}, row) + stage.thing("loose", {200, 0, 100, 100}) +
               stage.thing("beside", {600, 0, 100, 100}));
    QCOMPARE(stage.after("a", Qt::Key_Right), u"b"_s);
    QCOMPARE(stage.after("b", Qt::Key_Right), u"beside"_s);
}

void FocusScreenTest::theShortLastLineOfASectionIsReached()
{
    FocusStage stage;
    const QString grid = stage.thing("a", {0, 0, 100, 100}) + stage.thing("b", {200, 0, 100, 100}) +
                         stage.thing("c", {400, 0, 100, 100}) + stage.thing("d", {0, 200, 100, 100}) +
                         stage.thing("e", {200, 200, 100, 100});
    stage.walk(stage.item("FocusSection", "grid", {0, 0, 500, 300}, grid) + stage.thing("below", {0, 400, 500, 100}));
    QCOMPARE(stage.after("c", Qt::Key_Down), u"e"_s);
    QCOMPARE(stage.after("e", Qt::Key_Right), u"e"_s);
    QCOMPARE(stage.after("e", Qt::Key_Down), u"below"_s);
}

void FocusScreenTest::anEmptySectionIsPassed()
{
    FocusStage stage;
    stage.walk(stage.thing("a", {0, 0, 100, 100}) + stage.item("FocusSection", "empty", {0, 200, 100, 100}, {}) +
               stage.thing("b", {0, 400, 100, 100}));
    QCOMPARE(stage.after("a", Qt::Key_Down), u"b"_s);
}

void FocusScreenTest::whatCannotHoldTheFocusIsPassed()
{
    FocusStage stage;
    const QString inner = stage.thing("nested", {0, 0, 100, 100});
    stage.walk(stage.thing("a", {0, 0, 100, 100}) + stage.thing("hidden", {0, 200, 100, 100}, "visible: false") +
               stage.thing("disabled", {0, 400, 100, 100}, "enabled: false") + stage.thing("empty", {0, 550, 100, 0}) +
               stage.item("FocusScreen", "screen", {0, 600, 100, 100}, inner) +
               stage.item("Item", "group", {0, 0, 100, 900},
                          u"enabled: false\n"_s + stage.thing("inDisabled", {0, 750, 100, 100})) +
               stage.thing("b", {0, 900, 100, 100}));
    QCOMPARE(stage.after("a", Qt::Key_Down), u"b"_s);
}

void FocusScreenTest::theLiftOfACardDoesNotCount()
{
    FocusStage stage;
    stage.walk(stage.thing("a", {0, 0, 100, 100}, "scale: activeFocus ? 1.5 : 1") +
               stage.thing("b", {110, 0, 100, 100}));
    QCOMPARE(stage.after("a", Qt::Key_Right), u"b"_s);
}

void FocusScreenTest::aScrollUnderWayCountsAsEnded()
{
    FocusStage stage;
    const QString content =
        u"contentExtent: 2100\n"_s + stage.thing("top", {0, 0, 100, 100}) + stage.thing("bottom", {0, 2000, 100, 100});
    stage.walk(stage.item("ScrollArea", "area", {0, 0, 100, 1000}, content) +
               stage.thing("besideTop", {200, 0, 100, 100}) + stage.thing("besideBottom", {200, 900, 100, 100}));
    auto& area = stage.named<ScrollArea>("area");
    QCOMPARE(stage.after("top", Qt::Key_Down), u"bottom"_s);
    QCOMPARE(area.aim(), 1100.0);
    QCOMPARE(area.position(), 0.0);
    stage.press(Qt::Key_Right);
    QCOMPARE(stage.focused(), u"besideBottom"_s);
}

void FocusScreenTest::theSectionComesIntoSightWhereItFits()
{
    FocusStage stage;
    const QString things = stage.thing("first", {0, 0, 100, 100}) + stage.thing("last", {0, 900, 100, 100});
    const QString content =
        u"contentExtent: 3000\n"_s + stage.item("FocusSection", "fits", {0, 600, 100, 1000}, things);
    stage.walk(stage.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    auto& area = stage.named<ScrollArea>("area");
    stage.screen().focus(&stage.named("first"), true);
    QCOMPARE(area.aim(), 600.0);

    stage.named<FocusSection>("fits").setHeight(1100);
    stage.screen().focus(&stage.named("last"), true);
    QCOMPARE(area.aim(), 600.0);
    stage.named("last").setY(950);
    stage.screen().focus(&stage.named("last"), true);
    QCOMPARE(area.aim(), 650.0);
}

void FocusScreenTest::aThingInARowThatScrollsComesIntoSight()
{
    FocusStage stage;
    const QString content = u"orientation: Qt.Horizontal; contentExtent: 3000\n"_s +
                            stage.thing("first", {0, 0, 100, 100}) + stage.thing("last", {2900, 0, 100, 100});
    const QString area = stage.item("ScrollArea", "area", {0, 0, 1000, 100}, content);
    stage.walk(stage.item("FocusSection", "row", {0, 0, 1000, 100}, area));
    QCOMPARE(stage.after("first", Qt::Key_Right), u"last"_s);
    QCOMPARE(stage.named<ScrollArea>("area").aim(), 2000.0);
    stage.press(Qt::Key_Left);
    QCOMPARE(stage.named<ScrollArea>("area").aim(), 0.0);
}

void FocusScreenTest::theFirstFocusIsInSightAtOnce()
{
    FocusStage stage;
    const QString content = u"contentExtent: 3000\n"_s + stage.thing("a", {0, 0, 100, 100}) +
                            stage.thing("b", {0, 2900, 100, 100}, "preferred: true");
    stage.walk(stage.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    QCOMPARE(stage.named<ScrollArea>("area").position(), 2000.0);
}

void FocusScreenTest::whatIsWhollyShownIsNotReadOn()
{
    FocusStage stage;
    const QString content = u"contentExtent: 3000\n"_s + stage.thing("above", {0, 900, 100, 100}) +
                            stage.thing("middle", {0, 1300, 100, 100}) + stage.thing("below", {0, 1700, 100, 100});
    stage.walk(stage.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    const auto& area = stage.named<ScrollArea>("area");
    stage.screen().focus(&stage.named("below"), true);
    QCOMPARE(area.aim(), 800.0);
    QCOMPARE(stage.after("middle", Qt::Key_Down), u"below"_s);
    QCOMPARE(stage.after("middle", Qt::Key_Up), u"above"_s);
    QCOMPARE(area.aim(), 800.0);
}

void FocusScreenTest::aStackIsToldOfTheRowThatHoldsTheFocus()
{
    FocusStage stage;
    const QString stack = u"orientation: Qt.Horizontal; extent: 100; spacing: 10; model: ListModel {\n"
                          u"ListElement { key: 1 } ListElement { key: 2 } }\n"_s +
                          u"Focusable { required property int index; objectName: index; width: 100; height: 100 }"_s;
    const QString content = u"orientation: Qt.Horizontal; contentExtent: 210\n"_s +
                            stage.item("LazyStack", "stack", {0, 0, 210, 100}, stack);
    stage.walk(stage.item("ScrollArea", "area", {0, 0, 1000, 100}, content));
    const QSignalSpy held(&stage.named<LazyStack>("stack"), &LazyStack::held);
    stage.press(Qt::Key_Right);
    QCOMPARE(stage.focused(), u"1"_s);
    QCOMPARE(held.count(), 1);
    QCOMPARE(held.first().first().toInt(), 1);
}

void FocusScreenTest::aThingTallerThanTheViewIsReadToItsEndFirst()
{
    FocusStage stage;
    const QString content = u"contentExtent: 2900; lead: 50\n"_s + stage.thing("long", {0, 0, 100, 2500}) +
                            stage.thing("next", {0, 2600, 100, 100});
    stage.walk(stage.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    const auto& area = stage.named<ScrollArea>("area");
    QCOMPARE(stage.focused(), u"long"_s);
    for (const qreal aim : {800.0, 1550.0}) {
        QVERIFY(stage.screen().move(Qt::Key_Down));
        QCOMPARE(area.aim(), aim);
        QCOMPARE(stage.focused(), u"long"_s);
    }
    QVERIFY(stage.screen().move(Qt::Key_Down));
    QCOMPARE(stage.focused(), u"next"_s);
    QVERIFY(!stage.screen().move(Qt::Key_Down));

    stage.screen().focus(&stage.named("long"), true);
    QCOMPARE(area.aim(), 0.0);
    QVERIFY(!stage.screen().move(Qt::Key_Up));
}

void FocusScreenTest::selectActsOnceAPress()
{
    FocusStage stage;
    stage.walk(stage.thing("a", {0, 0, 100, 100}) + stage.thing("b", {200, 0, 100, 100}));
    const QSignalSpy selected(&stage.named("a"), &Focusable::selected);
    const QSignalSpy other(&stage.named("b"), &Focusable::selected);
    stage.press(Qt::Key_Select);
    QCOMPARE(selected.count(), 1);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Select, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(&stage.window(), &repeat);
        QVERIFY(repeat.isAccepted());
    }
    QCOMPARE(selected.count(), 1);
    stage.press(Qt::Key_Select);
    QCOMPARE(selected.count(), 2);
    QCOMPARE(other.count(), 0);
}

void FocusScreenTest::arrowsStayOnTheScreenAndBackLeavesIt()
{
    FocusStage stage;
    const QString inner = stage.thing("inside", {0, 0, 100, 100});
    stage.walk(stage.thing("a", {0, 0, 100, 100}) + stage.thing("b", {0, 400, 100, 100}) +
               stage.item("FocusScreen", "inner", {0, 200, 100, 100}, inner));
    stage.named<FocusScreen>("inner").takeFocus();
    QCOMPARE(stage.focused(), u"inside"_s);
    const auto isAccepted = [&stage](int key) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&stage.window(), &press);
        return press.isAccepted();
    };
    for (const int arrow : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right})
        QVERIFY(isAccepted(arrow));
    QCOMPARE(stage.focused(), u"inside"_s);
    QCOMPARE(stage.screen().focused(), &stage.named("a"));
    QVERIFY(!isAccepted(Qt::Key_Back));
    QVERIFY(!isAccepted(Qt::Key_MediaTogglePlayPause));
}

QTEST_MAIN(FocusScreenTest)
#include "FocusScreenTest.moc"
