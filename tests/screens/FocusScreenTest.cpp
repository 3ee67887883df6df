#include "FocusFixture.h"

#include "FocusSection.h"
#include "ScrollArea.h"
#include "TestMain.h"

#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

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
    FocusFixture fixture;
    fixture.showScreen(fixture.focusable("a", {0, 0, 100, 100}) + fixture.focusable("b", {200, 0, 100, 100}) +
                       fixture.focusable("c", {0, 200, 100, 100}) + fixture.focusable("d", {200, 260, 100, 100}) +
                       fixture.focusable("e", {0, 500, 220, 100}) + fixture.focusable("f", {225, 500, 100, 100}));
    QTEST(fixture.focusedAfter(from.toLatin1(), arrow), "to");
}

void FocusScreenTest::wholeAreaOfSectionIsFocusTarget()
{
    FocusFixture fixture;
    fixture.showScreen(
        fixture.focusable("above", {0, 0, 100, 100}) +
        fixture.item("FocusSection", "row", {0, 200, 1000, 100}, fixture.focusable("inRow", {800, 0, 100, 100})));
    QCOMPARE(fixture.focusedAfter("above", Qt::Key_Down), u"inRow"_s);
    QCOMPARE(fixture.focusedAfter("inRow", Qt::Key_Up), u"inRow"_s);
}

void FocusScreenTest::sectionIsEnteredAtNearestThenAtItsCurrentItem()
{
    FocusFixture fixture;
    const QString row = fixture.focusable("a", {0, 0, 100, 100}) + fixture.focusable("b", {200, 0, 100, 100}) +
                        fixture.focusable("c", {400, 0, 100, 100});
    fixture.showScreen(fixture.focusable("above", {210, 0, 100, 100}) +
                       fixture.item("FocusSection", "row", {0, 200, 500, 100}, row));
    QCOMPARE(fixture.focusedAfter("above", Qt::Key_Down), u"b"_s);
    fixture.press(Qt::Key_Left);
    QCOMPARE(fixture.focusedObjectName(), u"a"_s);
    QCOMPARE(fixture.focusedAfter("above", Qt::Key_Down), u"a"_s);
}

void FocusScreenTest::sectionThatEntersAtFirstIsEnteredAtFirstThenAtItsCurrentItem()
{
    FocusFixture fixture;
    const QString items = fixture.focusable("last", {310, 0, 100, 100}) + fixture.focusable("b", {200, 0, 100, 100}) +
                          fixture.focusable("a", {0, 0, 99, 99});
    fixture.showScreen(fixture.focusable("above", {310, 0, 100, 100}) +
                       fixture.item("FocusSection", "row", {0, 200, 500, 100}, u"entersAtFirst: true\n"_s + items));
    fixture.press(Qt::Key_Down);
    QCOMPARE(fixture.focusedObjectName(), u"a"_s);
    fixture.press(Qt::Key_Right);
    fixture.press(Qt::Key_Up);
    fixture.press(Qt::Key_Down);
    QCOMPARE(fixture.focusedObjectName(), u"b"_s);
}

void FocusScreenTest::sectionIsEnteredAtNearestWhenItsCurrentItemIsUnavailable()
{
    FocusFixture fixture;
    const QString row = fixture.focusable("a", {0, 0, 100, 100}) + fixture.focusable("b", {200, 0, 100, 100});
    fixture.showScreen(fixture.focusable("above", {210, 0, 100, 100}) +
                       fixture.item("FocusSection", "row", {0, 200, 500, 100}, row));
    fixture.screen().focus(&fixture.named("a"));
    fixture.screen().focus(&fixture.named("above"));
    fixture.named("a").setEnabled(false);
    QCOMPARE(fixture.named<FocusSection>("row").current(), nullptr);
    fixture.press(Qt::Key_Down);
    QCOMPARE(fixture.focusedObjectName(), u"b"_s);
    fixture.named("b").setParentItem(&fixture.screen());
    QCOMPARE(fixture.named<FocusSection>("row").current(), nullptr);
}

void FocusScreenTest::sectionIsEnteredWhenItsItemsLieOutsideItsArea()
{
    FocusFixture fixture;
    const QString items =
        fixture.focusable("far", {-300, 0, 100, 100}) + fixture.focusable("near", {-150, 0, 100, 100});
    fixture.showScreen(fixture.focusable("a", {0, 0, 100, 100}, "preferred: true") +
                       fixture.item("FocusSection", "row", {200, 0, 500, 100}, items));
    QCOMPARE(fixture.focusedAfter("a", Qt::Key_Right), u"near"_s);
}

void FocusScreenTest::focusStaysInSectionWhileItHasTargets()
{
    FocusFixture fixture;
    const QString row = fixture.focusable("a", {0, 0, 100, 100}) + fixture.focusable("b", {400, 0, 100, 100});
    // It is nearer to the first item than the second item is.
    fixture.showScreen(fixture.item("FocusSection", "row", {0, 0, 500, 100}, row) +
                       fixture.focusable("loose", {200, 0, 100, 100}) +
                       fixture.focusable("beside", {600, 0, 100, 100}));
    QCOMPARE(fixture.focusedAfter("a", Qt::Key_Right), u"b"_s);
    QCOMPARE(fixture.focusedAfter("b", Qt::Key_Right), u"beside"_s);
}

void FocusScreenTest::shortLastLineOfSectionIsReachable()
{
    FocusFixture fixture;
    const QString grid = fixture.focusable("a", {0, 0, 100, 100}) + fixture.focusable("b", {200, 0, 100, 100}) +
                         fixture.focusable("c", {400, 0, 100, 100}) + fixture.focusable("d", {0, 200, 100, 100}) +
                         fixture.focusable("e", {200, 200, 100, 100});
    fixture.showScreen(fixture.item("FocusSection", "grid", {0, 0, 500, 300}, grid) +
                       fixture.focusable("below", {0, 400, 500, 100}));
    QCOMPARE(fixture.focusedAfter("c", Qt::Key_Down), u"e"_s);
    QCOMPARE(fixture.focusedAfter("e", Qt::Key_Right), u"e"_s);
    QCOMPARE(fixture.focusedAfter("e", Qt::Key_Down), u"below"_s);
}

void FocusScreenTest::emptySectionIsSkipped()
{
    FocusFixture fixture;
    fixture.showScreen(fixture.focusable("a", {0, 0, 100, 100}) +
                       fixture.item("FocusSection", "empty", {0, 200, 100, 100}, {}) +
                       fixture.focusable("b", {0, 400, 100, 100}));
    QCOMPARE(fixture.focusedAfter("a", Qt::Key_Down), u"b"_s);
}

void FocusScreenTest::itemsThatCannotHaveFocusAreSkipped()
{
    FocusFixture fixture;
    const QString inner = fixture.focusable("nested", {0, 0, 100, 100});
    fixture.showScreen(fixture.focusable("a", {0, 0, 100, 100}) +
                       fixture.focusable("hidden", {0, 200, 100, 100}, "visible: false") +
                       fixture.focusable("disabled", {0, 400, 100, 100}, "enabled: false") +
                       fixture.focusable("empty", {0, 550, 100, 0}) +
                       fixture.item("FocusScreen", "screen", {0, 600, 100, 100}, inner) +
                       fixture.item("Item", "group", {0, 0, 100, 900},
                                    u"enabled: false\n"_s + fixture.focusable("inDisabled", {0, 750, 100, 100})) +
                       fixture.focusable("b", {0, 900, 100, 100}));
    QCOMPARE(fixture.focusedAfter("a", Qt::Key_Down), u"b"_s);
}

void FocusScreenTest::navigationIgnoresScaleOfItems()
{
    FocusFixture fixture;
    fixture.showScreen(fixture.focusable("a", {0, 0, 100, 100}, "scale: activeFocus ? 1.5 : 1") +
                       fixture.focusable("b", {110, 0, 100, 100}));
    QCOMPARE(fixture.focusedAfter("a", Qt::Key_Right), u"b"_s);
}

void FocusScreenTest::navigationUsesScrollTargetDuringScroll()
{
    FocusFixture fixture;
    const QString content = u"contentExtent: 2100\n"_s + fixture.focusable("top", {0, 0, 100, 100}) +
                            fixture.focusable("bottom", {0, 2000, 100, 100});
    fixture.showScreen(fixture.item("ScrollArea", "area", {0, 0, 100, 1000}, content) +
                       fixture.focusable("besideTop", {200, 0, 100, 100}) +
                       fixture.focusable("besideBottom", {200, 900, 100, 100}));
    auto& area = fixture.named<ScrollArea>("area");
    QCOMPARE(fixture.focusedAfter("top", Qt::Key_Down), u"bottom"_s);
    QCOMPARE(area.targetPosition(), 1100.0);
    QCOMPARE(area.position(), 0.0);
    fixture.press(Qt::Key_Right);
    QCOMPARE(fixture.focusedObjectName(), u"besideBottom"_s);
}

void FocusScreenTest::wholeSectionIsScrolledIntoViewIfItFits()
{
    FocusFixture fixture;
    const QString items = fixture.focusable("first", {0, 0, 100, 100}) + fixture.focusable("last", {0, 900, 100, 100});
    const QString content =
        u"contentExtent: 3000\n"_s + fixture.item("FocusSection", "fits", {0, 600, 100, 1000}, items);
    fixture.showScreen(fixture.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    auto& area = fixture.named<ScrollArea>("area");
    fixture.screen().focus(&fixture.named("first"), true);
    QCOMPARE(area.targetPosition(), 600.0);

    fixture.named<FocusSection>("fits").setHeight(1100);
    fixture.screen().focus(&fixture.named("last"), true);
    QCOMPARE(area.targetPosition(), 600.0);
    fixture.named("last").setY(950);
    fixture.screen().focus(&fixture.named("last"), true);
    QCOMPARE(area.targetPosition(), 650.0);
}

void FocusScreenTest::focusedItemOfRowIsScrolledIntoView()
{
    FocusFixture fixture;
    const QString content = u"orientation: Qt.Horizontal; contentExtent: 3000\n"_s +
                            fixture.focusable("first", {0, 0, 100, 100}) +
                            fixture.focusable("last", {2900, 0, 100, 100});
    const QString area = fixture.item("ScrollArea", "area", {0, 0, 1000, 100}, content);
    fixture.showScreen(fixture.item("FocusSection", "row", {0, 0, 1000, 100}, area));
    QCOMPARE(fixture.focusedAfter("first", Qt::Key_Right), u"last"_s);
    QCOMPARE(fixture.named<ScrollArea>("area").targetPosition(), 2000.0);
    fixture.press(Qt::Key_Left);
    QCOMPARE(fixture.named<ScrollArea>("area").targetPosition(), 0.0);
}

void FocusScreenTest::initialFocusIsScrolledIntoViewWithoutAnimation()
{
    FocusFixture fixture;
    const QString content = u"contentExtent: 3000\n"_s + fixture.focusable("a", {0, 0, 100, 100}) +
                            fixture.focusable("b", {0, 2900, 100, 100}, "preferred: true");
    fixture.showScreen(fixture.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    QCOMPARE(fixture.named<ScrollArea>("area").position(), 2000.0);
}

void FocusScreenTest::arrowMovesOnFromFullyVisibleItemWithoutScrolling()
{
    FocusFixture fixture;
    const QString content = u"contentExtent: 3000\n"_s + fixture.focusable("above", {0, 900, 100, 100}) +
                            fixture.focusable("middle", {0, 1300, 100, 100}) +
                            fixture.focusable("below", {0, 1700, 100, 100});
    fixture.showScreen(fixture.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    const auto& area = fixture.named<ScrollArea>("area");
    fixture.screen().focus(&fixture.named("below"), true);
    QCOMPARE(area.targetPosition(), 800.0);
    QCOMPARE(fixture.focusedAfter("middle", Qt::Key_Down), u"below"_s);
    QCOMPARE(fixture.focusedAfter("middle", Qt::Key_Up), u"above"_s);
    QCOMPARE(area.targetPosition(), 800.0);
}

void FocusScreenTest::arrowScrollsItemTallerThanViewportBeforeFocusMoves()
{
    FocusFixture fixture;
    const QString content = u"contentExtent: 2900; revealMargin: 50\n"_s +
                            fixture.focusable("long", {0, 0, 100, 2500}) +
                            fixture.focusable("next", {0, 2600, 100, 100});
    fixture.showScreen(fixture.item("ScrollArea", "area", {0, 0, 100, 1000}, content));
    const auto& area = fixture.named<ScrollArea>("area");
    QCOMPARE(fixture.focusedObjectName(), u"long"_s);
    for (const qreal position : {800.0, 1550.0}) {
        QVERIFY(fixture.screen().move(Qt::Key_Down));
        QCOMPARE(area.targetPosition(), position);
        QCOMPARE(fixture.focusedObjectName(), u"long"_s);
    }
    QVERIFY(fixture.screen().move(Qt::Key_Down));
    QCOMPARE(fixture.focusedObjectName(), u"next"_s);
    QVERIFY(!fixture.screen().move(Qt::Key_Down));

    fixture.screen().focus(&fixture.named("long"), true);
    QCOMPARE(area.targetPosition(), 0.0);
    QVERIFY(!fixture.screen().move(Qt::Key_Up));
}

void FocusScreenTest::selectActsOncePerKeyPress()
{
    FocusFixture fixture;
    fixture.showScreen(fixture.focusable("a", {0, 0, 100, 100}) + fixture.focusable("b", {200, 0, 100, 100}));
    const QSignalSpy selected(&fixture.named("a"), &Focusable::selected);
    const QSignalSpy other(&fixture.named("b"), &Focusable::selected);
    fixture.press(Qt::Key_Select);
    QCOMPARE(selected.count(), 1);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Select, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(&fixture.window(), &repeat);
        QVERIFY(repeat.isAccepted());
    }
    QCOMPARE(selected.count(), 1);
    fixture.press(Qt::Key_Select);
    QCOMPARE(selected.count(), 2);
    QCOMPARE(other.count(), 0);
}

void FocusScreenTest::innerScreenAcceptsArrowsButNotBack()
{
    FocusFixture fixture;
    const QString inner = fixture.focusable("inside", {0, 0, 100, 100});
    fixture.showScreen(fixture.focusable("a", {0, 0, 100, 100}) + fixture.focusable("b", {0, 400, 100, 100}) +
                       fixture.item("FocusScreen", "inner", {0, 200, 100, 100}, inner));
    fixture.named<FocusScreen>("inner").acquireFocus();
    QCOMPARE(fixture.focusedObjectName(), u"inside"_s);
    const auto isAccepted = [&fixture](int key) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&fixture.window(), &press);
        return press.isAccepted();
    };
    for (const int arrow : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right})
        QVERIFY(isAccepted(arrow));
    QCOMPARE(fixture.focusedObjectName(), u"inside"_s);
    QCOMPARE(fixture.screen().focused(), &fixture.named("a"));
    QVERIFY(!isAccepted(Qt::Key_Back));
    QVERIFY(!isAccepted(Qt::Key_MediaTogglePlayPause));
}

QUILLMERE_TEST(FocusScreenTest, QGuiApplication)

} // namespace quillmere

#include "FocusScreenTest.moc"
