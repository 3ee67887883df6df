#include "FocusStage.h"

#include "FocusSection.h"
#include "ScrollArea.h"
#include "TestMain.h"

#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/** Targets of the arrow keys, and the select key. */
class FocusScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void arrowMovesFocusToNearestItem_data();
    void arrowMovesFocusToNearestItem();
    void wholeAreaOfSectionIsFocusTarget();
    void sectionIsEnteredAtNearestThenAtItsCurrentItem();
    void sectionThatEntersAtFirstIsEnteredAtFirstThenAtItsCurrentItem();
    void sectionIsEnteredAtNearestWhenItsCurrentItemIsUnavailable();
    void sectionIsEnteredWhenItsItemsLieOutsideItsArea();
    void focusStaysInSectionWhileItHasTargets();
    void shortLastLineOfSectionIsReachable();
    void emptySectionIsSkipped();
    void itemsThatCannotHaveFocusAreSkipped();
    void navigationIgnoresScaleOfItems();
    void navigationUsesScrollTargetDuringScroll();
    void wholeSectionIsScrolledIntoViewIfItFits();
    void focusedItemOfRowIsScrolledIntoView();
    void initialFocusIsScrolledIntoViewWithoutAnimation();
    void arrowMovesOnFromFullyVisibleItemWithoutScrolling();
    void arrowScrollsItemTallerThanViewportBeforeFocusMoves();
    void selectActsOncePerKeyPress();
    void innerScreenAcceptsArrowsButNotBack();
};

void FocusScreenTest::arrowMovesFocusToNearestItem_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<int>("arrow");
    QTest::addColumn<QString>("to");

    QTest::newRow("right") << u"a"_s << int(Qt::Key_Right) << u"b"_s;
    QTest::newRow("left") << u"b"_s << int(Qt::Key_Left) << u"a"_s;
    QTest::newRow("down") << u"a"_s << int(Qt::Key_Down) << u"c"_s;
    QTest::newRow("up") << u"c"_s << int(Qt::Key_Up) << u"a"_s;
    QTest::newRow("target with an offset") << u"c"_s << int(Qt::Key_Right) << u"d"_s;
    QTest::newRow("nearer of two") << u"e"_s << int(Qt::Key_Up) << u"d"_s;
    QTest::newRow("best aligned of several") << u"d"_s << int(Qt::Key_Down) << u"f"_s;
    QTest::newRow("nothing at the left end") << u"a"_s << int(Qt::Key_Left) << u"a"_s;
    QTest::newRow("nothing at the right end") << u"b"_s << int(Qt::Key_Right) << u"b"_s;
    QTest::newRow("nothing at the top") << u"b"_s << int(Qt::Key_Up) << u"b"_s;
    QTest::newRow("nothing at the bottom") << u"e"_s << int(Qt::Key_Down) << u"e"_s;
    QTest::newRow("no target in this direction") << u"f"_s << int(Qt::Key_Right) << u"f"_s;
}

void FocusScreenTest::arrowMovesFocusToNearestItem()
{
    QFETCH(QString, from);
    QFETCH(int, arrow);
    FocusStage stage;
    stage.showScreen(stage.focusable("a", {0, 0, 100, 100}) + stage.focusable("b", {200, 0, 100, 100}) +
                     stage.focusable("c", {0, 200, 100, 100}) + stage.focusable("d", {200, 260, 100, 100}) +
                     stage.focusable("e", {0, 500, 220, 100}) + stage.focusable("f", {225, 500, 100, 100}));
    QTEST(stage.focusedAfter(from.toLatin1(), arrow), "to");
}

void FocusScreenTest::wholeAreaOfSectionIsFocusTarget()
{
    FocusStage stage;
    stage.showScreen(
        stage.focusable("above", {0, 0, 100, 100}) +
        stage.item("FocusSection", "row", {0, 200, 1000, 100}, stage.focusable("inRow", {800, 0, 100, 100})));
    QCOMPARE(stage.focusedAfter("above", Qt::Key_Down), u"inRow"_s);
    QCOMPARE(stage.focusedAfter("inRow", Qt::Key_Up), u"inRow"_s);
}

void FocusScreenTest::sectionIsEnteredAtNearestThenAtItsCurrentItem()
{
    FocusStage stage;
    const QString row = stage.focusable("a", {0, 0, 100, 100}) + stage.focusable("b", {200, 0, 100, 100}) +
                        stage.focusable("c", {400, 0, 100, 100});
    stage.showScreen(stage.focusable("above", {210, 0, 100, 100}) +
                     stage.item("FocusSection", "row", {0, 200, 500, 100}, row));
    QCOMPARE(stage.focusedAfter("above", Qt::Key_Down), u"b"_s);
    stage.press(Qt::Key_Left);
    QCOMPARE(stage.focused(), u"a"_s);
    QCOMPARE(stage.focusedAfter("above", Qt::Key_Down), u"a"_s);
}

void FocusScreenTest::sectionThatEntersAtFirstIsEnteredAtFirstThenAtItsCurrentItem()
{
    FocusStage stage;
    const QString items = stage.focusable("last", {310, 0, 100, 100}) + stage.focusable("b", {200, 0, 100, 100}) +
                          stage.focusable("a", {0, 0, 99, 99});
    stage.showScreen(stage.focusable("above", {310, 0, 100, 100}) +
                     stage.item("FocusSection", "row", {0, 200, 500, 100}, u"entersAtFirst: true\n"_s + items));
    stage.press(Qt::Key_Down);
    QCOMPARE(stage.focused(), u"a"_s);
    stage.press(Qt::Key_Right);
    stage.press(Qt::Key_Up);
    stage.press(Qt::Key_Down);
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusScreenTest::sectionIsEnteredAtNearestWhenItsCurrentItemIsUnavailable()
{
    FocusStage stage;
    const QString row = stage.focusable("a", {0, 0, 100, 100}) + stage.focusable("b", {200, 0, 100, 100});
    stage.showScreen(stage.focusable("above", {210, 0, 100, 100}) +
                     stage.item("FocusSection", "row", {0, 200, 500, 100}, row));
    stage.screen().focus(&stage.named("a"));
    stage.screen().focus(&stage.named("above"));
    stage.named("a").setEnabled(false);
    QCOMPARE(stage.named<FocusSection>("row").current(), nullptr);
    stage.press(Qt::Key_Down);
    QCOMPARE(stage.focused(), u"b"_s);
    stage.named("b").setParentItem(&stage.screen());
    QCOMPARE(stage.named<FocusSection>("row").current(), nullptr);
}

void FocusScreenTest::sectionIsEnteredWhenItsItemsLieOutsideItsArea()
{
    FocusStage stage;
    const QString items = stage.focusable("far", {-300, 0, 100, 100}) + stage.focusable("near", {-150, 0, 100, 100});
    stage.showScreen(stage.focusable("a", {0, 0, 100, 100}, "preferred: true") +
                     stage.item("FocusSection", "row", {200, 0, 500, 100}, items));
    QCOMPARE(stage.focusedAfter("a", Qt::Key_Right), u"near"_s);
}

void FocusScreenTest::focusStaysInSectionWhileItHasTargets()
{
    FocusStage stage;
    const QString row = stage.focusable("a", {0, 0, 100, 100}) + stage.focusable("b", {400, 0, 100, 100});
    // It is nearer to the first item than the second item is.
    stage.showScreen(stage.item("FocusSection", "row", {0, 0, 500, 100}, row) +
                     stage.focusable("loose", {200, 0, 100, 100}) + stage.focusable("beside", {600, 0, 100, 100}));
    QCOMPARE(stage.focusedAfter("a", Qt::Key_Right), u"b"_s);
    QCOMPARE(stage.focusedAfter("b", Qt::Key_Right), u"beside"_s);
}

void FocusScreenTest::shortLastLineOfSectionIsReachable()
{
    FocusStage stage;
    const QString grid = stage.focusable("a", {0, 0, 100, 100}) + stage.focusable("b", {200, 0, 100, 100}) +
                         stage.focusable("c", {400, 0, 100, 100}) + stage.focusable("d", {0, 200, 100, 100}) +
                         stage.focusable("e", {200, 200, 100, 100});
    stage.showScreen(stage.item("FocusSection", "grid", {0, 0, 500, 300}, grid) +
                     stage.focusable("below", {0, 400, 500, 100}));
    QCOMPARE(stage.focusedAfter("c", Qt::Key_Down), u"e"_s);
    QCOMPARE(stage.focusedAfter("e", Qt::Key_Right), u"e"_s);
    QCOMPARE(stage.focusedAfter("e", Qt::Key_Down), u"below"_s);
}

void FocusScreenTest::emptySectionIsSkipped()
{
    FocusStage stage;
    stage.showScreen(stage.focusable("a", {0, 0, 100, 100}) +
                     stage.item("FocusSection", "empty", {0, 200, 100, 100}, {}) +
                     stage.focusable("b", {0, 400, 100, 100}));
    QCOMPARE(stage.focusedAfter("a", Qt::Key_Down), u"b"_s);
}

void FocusScreenTest::itemsThatCannotHaveFocusAreSkipped()
{
    FocusStage stage;
    const QString inner = stage.focusable("nested", {0, 0, 100, 100});
    stage.showScreen(
        stage.focusable("a", {0, 0, 100, 100}) + stage.focusable("hidden", {0, 200, 100, 100}, "visible: false") +
        stage.focusable("disabled", {0, 400, 100, 100}, "enabled: false") + stage.focusable("empty", {0, 550, 100, 0}) +
        stage.item("FocusScreen", "screen", {0, 600, 100, 100}, inner) +
        stage.item("Item", "group", {0, 0, 100, 900},
                   u"enabled: false\n"_s + stage.focusable("inDisabled", {0, 750, 100, 100})) +
        stage.focusable("b", {0, 900, 100, 100}));
    QCOMPARE(stage.focusedAfter("a", Qt::Key_Down), u"b"_s);
}

void FocusScreenTest::navigationIgnoresScaleOfItems()
{
    FocusStage stage;
    stage.showScreen(stage.focusable("a", {0, 0, 100, 100}, "scale: activeFocus ? 1.5 : 1") +
                     stage.focusable("b", {110, 0, 100, 100}));
    QCOMPARE(stage.focusedAfter("a", Qt::Key_Right), u"b"_s);
}

void FocusScreenTest::navigationUsesScrollTargetDuringScroll()
{
    FocusStage stage;
    const QString content = u"contentExtent: 2100\n"_s + stage.focusable("top", {0, 0, 100, 100}) +
                            stage.focusable("bottom", {0, 2000, 100, 100});
    stage.showScreen(stage.item("ScrollArea", "area", {0, 0, 100, 1000}, content) +
                     stage.focusable("besideTop", {200, 0, 100, 100}) +
                     stage.focusable("besideBottom", {200, 900, 100, 100}));
    auto& area = stage.named<ScrollArea>("area");
    QCOMPARE(stage.focusedAfter("top", Qt::Key_Down), u"bottom"_s);
    QCOMPARE(area.targetPosition(), 1100.0);
    QCOMPARE(area.position(), 0.0);
    stage.press(Qt::Key_Right);
    QCOMPARE(stage.focused(), u"besideBottom"_s);
}

void FocusScreenTest::wholeSectionIsScrolledIntoViewIfItFits()
{
    FocusStage stage;
    const QString items = stage.focusable("first", {0, 0, 100, 100}) + stage.focusable("last", {0, 900, 100, 100});
    const QString content = u"contentExtent: 3000\n"_s + stage.item("FocusSection", "fits", {0, 600, 100, 1000}, items);
    stage.showScreen(stage.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    auto& area = stage.named<ScrollArea>("area");
    stage.screen().focus(&stage.named("first"), true);
    QCOMPARE(area.targetPosition(), 600.0);

    stage.named<FocusSection>("fits").setHeight(1100);
    stage.screen().focus(&stage.named("last"), true);
    QCOMPARE(area.targetPosition(), 600.0);
    stage.named("last").setY(950);
    stage.screen().focus(&stage.named("last"), true);
    QCOMPARE(area.targetPosition(), 650.0);
}

void FocusScreenTest::focusedItemOfRowIsScrolledIntoView()
{
    FocusStage stage;
    const QString content = u"orientation: Qt.Horizontal; contentExtent: 3000\n"_s +
                            stage.focusable("first", {0, 0, 100, 100}) + stage.focusable("last", {2900, 0, 100, 100});
    const QString area = stage.item("ScrollArea", "area", {0, 0, 1000, 100}, content);
    stage.showScreen(stage.item("FocusSection", "row", {0, 0, 1000, 100}, area));
    QCOMPARE(stage.focusedAfter("first", Qt::Key_Right), u"last"_s);
    QCOMPARE(stage.named<ScrollArea>("area").targetPosition(), 2000.0);
    stage.press(Qt::Key_Left);
    QCOMPARE(stage.named<ScrollArea>("area").targetPosition(), 0.0);
}

void FocusScreenTest::initialFocusIsScrolledIntoViewWithoutAnimation()
{
    FocusStage stage;
    const QString content = u"contentExtent: 3000\n"_s + stage.focusable("a", {0, 0, 100, 100}) +
                            stage.focusable("b", {0, 2900, 100, 100}, "preferred: true");
    stage.showScreen(stage.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    QCOMPARE(stage.named<ScrollArea>("area").position(), 2000.0);
}

void FocusScreenTest::arrowMovesOnFromFullyVisibleItemWithoutScrolling()
{
    FocusStage stage;
    const QString content = u"contentExtent: 3000\n"_s + stage.focusable("above", {0, 900, 100, 100}) +
                            stage.focusable("middle", {0, 1300, 100, 100}) +
                            stage.focusable("below", {0, 1700, 100, 100});
    stage.showScreen(stage.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    const auto& area = stage.named<ScrollArea>("area");
    stage.screen().focus(&stage.named("below"), true);
    QCOMPARE(area.targetPosition(), 800.0);
    QCOMPARE(stage.focusedAfter("middle", Qt::Key_Down), u"below"_s);
    QCOMPARE(stage.focusedAfter("middle", Qt::Key_Up), u"above"_s);
    QCOMPARE(area.targetPosition(), 800.0);
}

void FocusScreenTest::arrowScrollsItemTallerThanViewportBeforeFocusMoves()
{
    FocusStage stage;
    const QString content = u"contentExtent: 2900; revealMargin: 50\n"_s + stage.focusable("long", {0, 0, 100, 2500}) +
                            stage.focusable("next", {0, 2600, 100, 100});
    stage.showScreen(stage.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    const auto& area = stage.named<ScrollArea>("area");
    QCOMPARE(stage.focused(), u"long"_s);
    for (const qreal position : {800.0, 1550.0}) {
        QVERIFY(stage.screen().move(Qt::Key_Down));
        QCOMPARE(area.targetPosition(), position);
        QCOMPARE(stage.focused(), u"long"_s);
    }
    QVERIFY(stage.screen().move(Qt::Key_Down));
    QCOMPARE(stage.focused(), u"next"_s);
    QVERIFY(!stage.screen().move(Qt::Key_Down));

    stage.screen().focus(&stage.named("long"), true);
    QCOMPARE(area.targetPosition(), 0.0);
    QVERIFY(!stage.screen().move(Qt::Key_Up));
}

void FocusScreenTest::selectActsOncePerKeyPress()
{
    FocusStage stage;
    stage.showScreen(stage.focusable("a", {0, 0, 100, 100}) + stage.focusable("b", {200, 0, 100, 100}));
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

void FocusScreenTest::innerScreenAcceptsArrowsButNotBack()
{
    FocusStage stage;
    const QString inner = stage.focusable("inside", {0, 0, 100, 100});
    stage.showScreen(stage.focusable("a", {0, 0, 100, 100}) + stage.focusable("b", {0, 400, 100, 100}) +
                     stage.item("FocusScreen", "inner", {0, 200, 100, 100}, inner));
    stage.named<FocusScreen>("inner").acquireFocus();
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

QUILLMERE_TEST(FocusScreenTest, QGuiApplication)
#include "FocusScreenTest.moc"
