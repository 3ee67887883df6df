#include "FocusFixture.h"
#include "Rows.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

/** Targets of the arrow keys, and the select key. */
class FocusScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void arrowMovesFocusToNearestItem_data()
    {
        rows<QString, int, QString>({"from", "arrow", "to"},
                                    {{"right", u"a"_s, Qt::Key_Right, u"b"_s},
                                     {"left", u"b"_s, Qt::Key_Left, u"a"_s},
                                     {"down", u"a"_s, Qt::Key_Down, u"c"_s},
                                     {"up", u"c"_s, Qt::Key_Up, u"a"_s},
                                     {"target with an offset", u"c"_s, Qt::Key_Right, u"d"_s},
                                     {"nearer of two", u"e"_s, Qt::Key_Up, u"d"_s},
                                     {"best aligned of several", u"d"_s, Qt::Key_Down, u"f"_s},
                                     {"nothing at the left end", u"a"_s, Qt::Key_Left, u"a"_s},
                                     {"nothing at the right end", u"b"_s, Qt::Key_Right, u"b"_s},
                                     {"nothing at the top", u"b"_s, Qt::Key_Up, u"b"_s},
                                     {"nothing at the bottom", u"e"_s, Qt::Key_Down, u"e"_s},
                                     {"no target in this direction", u"f"_s, Qt::Key_Right, u"f"_s}});
    }

    void arrowMovesFocusToNearestItem()
    {
        QFETCH(QString, from);
        QFETCH(int, arrow);
        FocusFixture fixture(focusable("a", {0, 0, 100, 100}) + focusable("b", {200, 0, 100, 100}) +
                             focusable("c", {0, 200, 100, 100}) + focusable("d", {200, 260, 100, 100}) +
                             focusable("e", {0, 500, 220, 100}) + focusable("f", {225, 500, 100, 100}));
        QTEST(fixture.focusedAfter(from.toLatin1(), arrow), "to");
    }

    void wholeAreaOfSectionIsFocusTarget()
    {
        FocusFixture fixture(focusable("above", {0, 0, 100, 100}) +
                             section({0, 200, 1000, 100}, focusable("inRow", {800, 0, 100, 100})));
        QCOMPARE(fixture.focusedAfter("above", Qt::Key_Down), u"inRow"_s);
        QCOMPARE(fixture.focusedAfter("inRow", Qt::Key_Up), u"inRow"_s);
    }

    void sectionIsEnteredAtNearestThenAtItsCurrentItem()
    {
        FocusFixture fixture(focusable("above", {460, 0, 100, 100}) + row());
        QCOMPARE(fixture.focusedAfter("above", Qt::Key_Down), u"b"_s);
        fixture.press(Qt::Key_Left);
        QCOMPARE(fixture.focusedObjectName(), u"a"_s);
        QCOMPARE(fixture.focusedAfter("above", Qt::Key_Down), u"a"_s);
    }

    void sectionThatEntersAtFirstIsEnteredAtFirstThenAtItsCurrentItem()
    {
        const QString items =
            focusable("last", {310, 0, 100, 100}) + focusable("b", {200, 0, 100, 100}) + focusable("a", {0, 0, 99, 99});
        FocusFixture fixture(focusable("above", {310, 0, 100, 100}) +
                             section({0, 200, 500, 100}, u"entersAtFirst: true\n"_s + items));
        fixture.press(Qt::Key_Down);
        QCOMPARE(fixture.focusedObjectName(), u"a"_s);
        fixture.press({Qt::Key_Right, Qt::Key_Up, Qt::Key_Down});
        QCOMPARE(fixture.focusedObjectName(), u"b"_s);
    }

    void sectionIsEnteredAtNearestWhenItsCurrentItemIsUnavailable()
    {
        FocusFixture fixture(
            focusable("above", {210, 0, 100, 100}) +
            section({0, 200, 500, 100}, focusable("a", {0, 0, 100, 100}) + focusable("b", {200, 0, 100, 100})));
        const auto& section = fixture.named<FocusSection>("section");
        fixture.focus("a");
        fixture.focus("above");
        fixture.named("a").setEnabled(false);
        QCOMPARE(section.current(), nullptr);
        fixture.press(Qt::Key_Down);
        QCOMPARE(fixture.focusedObjectName(), u"b"_s);
        fixture.named("b").setParentItem(fixture.screen);
        QCOMPARE(section.current(), nullptr);
    }

    void sectionIsEnteredWhenItsItemsLieOutsideItsArea()
    {
        FocusFixture fixture(focusable("a", {0, 0, 100, 100}, "preferred: true") +
                             section({200, 0, 500, 100},
                                     focusable("far", {-300, 0, 100, 100}) + focusable("near", {-150, 0, 100, 100})));
        QCOMPARE(fixture.focusedAfter("a", Qt::Key_Right), u"near"_s);
    }

    void focusStaysInSectionWhileItHasTargets()
    {
        const QString row = focusable("a", {0, 0, 100, 100}) + focusable("b", {400, 0, 100, 100});
        const QString nearer = focusable("loose", {200, 0, 100, 100});
        FocusFixture fixture(section({0, 0, 500, 100}, row) + nearer + focusable("beside", {600, 0, 100, 100}));
        QCOMPARE(fixture.focusedAfter("a", Qt::Key_Right), u"b"_s);
        QCOMPARE(fixture.focusedAfter("b", Qt::Key_Right), u"beside"_s);
    }

    void shortLastLineOfSectionIsReachable()
    {
        const QString grid = focusable("a", {0, 0, 100, 100}) + focusable("b", {200, 0, 100, 100}) +
                             focusable("c", {400, 0, 100, 100}) + focusable("d", {0, 200, 100, 100}) +
                             focusable("e", {200, 200, 100, 100});
        FocusFixture fixture(section({0, 0, 500, 300}, grid) + focusable("below", {0, 400, 500, 100}));
        QCOMPARE(fixture.focusedAfter("c", Qt::Key_Down), u"e"_s);
        QCOMPARE(fixture.focusedAfter("e", Qt::Key_Right), u"e"_s);
        QCOMPARE(fixture.focusedAfter("e", Qt::Key_Down), u"below"_s);
    }

    void itemsThatCannotHaveFocusAreSkipped()
    {
        FocusFixture fixture(
            focusable("a", {0, 0, 100, 100}) + focusable("hidden", {0, 200, 100, 100}, "visible: false") +
            focusable("disabled", {0, 400, 100, 100}, "enabled: false") + focusable("empty", {0, 550, 100, 0}) +
            qmlItem("FocusScreen", "inner", {0, 600, 100, 100}, focusable("nested", {0, 0, 100, 100})) +
            qmlItem("Item", "group", {0, 0, 100, 900},
                    u"enabled: false\n"_s + focusable("inDisabled", {0, 750, 100, 100})) +
            section({0, 860, 100, 30}, {}) + focusable("b", {0, 900, 100, 100}));
        QCOMPARE(fixture.focusedAfter("a", Qt::Key_Down), u"b"_s);
    }

    void navigationIgnoresScaleOfItems()
    {
        FocusFixture fixture(focusable("a", {0, 0, 100, 100}, "scale: activeFocus ? 1.5 : 1") +
                             focusable("b", {110, 0, 100, 100}));
        QCOMPARE(fixture.focusedAfter("a", Qt::Key_Right), u"b"_s);
    }

    void navigationUsesScrollTargetDuringScroll()
    {
        const QString content = focusable("top", {0, 0, 100, 100}) + focusable("bottom", {0, 2000, 100, 100});
        FocusFixture fixture(scrollArea(2100, content) + focusable("besideTop", {200, 0, 100, 100}) +
                             focusable("besideBottom", {200, 900, 100, 100}));
        QCOMPARE(fixture.focusedAfter("top", Qt::Key_Down), u"bottom"_s);
        QCOMPARE(fixture.area().targetPosition(), 1100.0);
        QCOMPARE(fixture.area().position(), 0.0);
        fixture.press(Qt::Key_Right);
        QCOMPARE(fixture.focusedObjectName(), u"besideBottom"_s);
    }

    void wholeSectionIsScrolledIntoViewIfItFits()
    {
        const QString items = focusable("first", {0, 0, 100, 100}) + focusable("last", {0, 900, 100, 100});
        FocusFixture fixture(scrollArea(3000, section({0, 600, 100, 1000}, items)));
        fixture.focus("first", true);
        QCOMPARE(fixture.area().targetPosition(), 600.0);

        fixture.named<FocusSection>("section").setHeight(1100);
        fixture.focus("last", true);
        QCOMPARE(fixture.area().targetPosition(), 600.0);
        fixture.named("last").setY(950);
        fixture.focus("last", true);
        QCOMPARE(fixture.area().targetPosition(), 650.0);
    }

    void focusedItemOfRowIsScrolledIntoView()
    {
        const QString content = u"orientation: Qt.Horizontal; contentExtent: 3000\n"_s +
                                focusable("first", {0, 0, 100, 100}) + focusable("last", {2900, 0, 100, 100});
        FocusFixture fixture(section({0, 0, 1000, 100}, qmlItem("ScrollArea", "area", {0, 0, 1000, 100}, content)));
        QCOMPARE(fixture.focusedAfter("first", Qt::Key_Right), u"last"_s);
        QCOMPARE(fixture.area().targetPosition(), 2000.0);
        fixture.press(Qt::Key_Left);
        QCOMPARE(fixture.area().targetPosition(), 0.0);
    }

    void initialFocusIsScrolledIntoViewWithoutAnimation()
    {
        FocusFixture fixture(scrollArea(3000, focusable("a", {0, 0, 100, 100}) +
                                                  focusable("b", {0, 2900, 100, 100}, "preferred: true")));
        QCOMPARE(fixture.area().position(), 2000.0);
    }

    void arrowMovesOnFromFullyVisibleItemWithoutScrolling()
    {
        FocusFixture fixture(scrollArea(3000, focusable("above", {0, 900, 100, 100}) +
                                                  focusable("middle", {0, 1300, 100, 100}) +
                                                  focusable("below", {0, 1700, 100, 100})));
        fixture.focus("below", true);
        QCOMPARE(fixture.area().targetPosition(), 800.0);
        QCOMPARE(fixture.focusedAfter("middle", Qt::Key_Down), u"below"_s);
        QCOMPARE(fixture.focusedAfter("middle", Qt::Key_Up), u"above"_s);
        QCOMPARE(fixture.area().targetPosition(), 800.0);
    }

    void arrowScrollsItemTallerThanViewportBeforeFocusMoves()
    {
        FocusFixture fixture(scrollArea(2900, u"revealMargin: 50\n"_s + focusable("long", {0, 0, 100, 2500}) +
                                                  focusable("next", {0, 2600, 100, 100})));
        QCOMPARE(fixture.focusedObjectName(), u"long"_s);
        for (const qreal position : {800.0, 1550.0}) {
            QVERIFY(fixture.screen->move(Qt::Key_Down));
            QCOMPARE(fixture.area().targetPosition(), position);
            QCOMPARE(fixture.focusedObjectName(), u"long"_s);
        }
        QVERIFY(fixture.screen->move(Qt::Key_Down));
        QCOMPARE(fixture.focusedObjectName(), u"next"_s);
        QVERIFY(!fixture.screen->move(Qt::Key_Down));

        fixture.focus("long", true);
        QCOMPARE(fixture.area().targetPosition(), 0.0);
        QVERIFY(!fixture.screen->move(Qt::Key_Up));
    }

    void selectActsOncePerKeyPress()
    {
        FocusFixture fixture(row());
        const QSignalSpy selected(&fixture.named("a"), &Focusable::selected);
        const QSignalSpy other(&fixture.named("b"), &Focusable::selected);
        fixture.press(Qt::Key_Select);
        QCOMPARE(selected.count(), 1);
        for (int i = 0; i < 3; ++i)
            QVERIFY(isAccepted(fixture, Qt::Key_Select, true));
        QCOMPARE(selected.count(), 1);
        fixture.press(Qt::Key_Select);
        QCOMPARE(selected.count(), 2);
        QCOMPARE(other.count(), 0);
    }

    void innerScreenAcceptsArrowsButNotBack()
    {
        FocusFixture fixture(
            focusable("a", {0, 0, 100, 100}) + focusable("b", {0, 400, 100, 100}) +
            qmlItem("FocusScreen", "inner", {0, 200, 100, 100}, focusable("inside", {0, 0, 100, 100})));
        fixture.named<FocusScreen>("inner").acquireFocus();
        QCOMPARE(fixture.focusedObjectName(), u"inside"_s);
        for (const int arrow : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right})
            QVERIFY(isAccepted(fixture, arrow));
        QCOMPARE(fixture.focusedObjectName(), u"inside"_s);
        QCOMPARE(fixture.screen->focused(), &fixture.named("a"));
        QVERIFY(!isAccepted(fixture, Qt::Key_Back));
        QVERIFY(!isAccepted(fixture, Qt::Key_MediaTogglePlayPause));
    }
};

QUILLMERE_TEST(FocusScreenTest, QGuiApplication)

} // namespace quillmere

#include "FocusScreenTest.moc"
