#include "FocusFixture.h"
#include "Rows.h"
#include "TestMain.h"

#include <QSignalSpy>

#include <functional>

namespace quillmere {

using Change = std::function<void(FocusFixture&)>;

namespace {

/** An item far below the viewport of its scroll area. */
QString scrolledItem()
{
    return scrollArea(2000, focusable("item", {0, 1500, 100, 100}));
}

} // namespace

/** Focus when items appear and disappear. */
class FocusKeepingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initialFocusIsTopmostThenLeadingItem()
    {
        const FocusFixture fixture(focusable("below", {0, 300, 100, 100}) + focusable("trailing", {300, 0, 100, 100}) +
                                   focusable("leading", {100, 10, 100, 80}));
        QCOMPARE(fixture.focusedObjectName(), u"leading"_s);
    }

    void initialFocusIsFirstPreferredItem()
    {
        const FocusFixture fixture(focusable("a", {0, 0, 100, 100}) +
                                   focusable("b", {0, 200, 100, 100}, "preferred: true") +
                                   focusable("c", {0, 100, 100, 100}, "preferred: true"));
        QCOMPARE(fixture.focusedObjectName(), u"b"_s);
    }

    void screenPassesFocusToItsFirstItem()
    {
        TestScreen fixture;
        auto* const screen = fixture.load(qmlItem("FocusScreen", "screen", {0, 0, 100, 100}, row()));
        QVERIFY(!screen->hasActiveFocus());
        screen->setFocus(true);
        QCOMPARE(fixture.focused()->objectName(), u"a"_s);
    }

    void itemWithForcedActiveFocusIsFocusedItem()
    {
        FocusFixture fixture(row());
        fixture.named("b").forceActiveFocus();
        QCOMPARE(fixture.screen->focused(), &fixture.named("b"));
        fixture.press(Qt::Key_Right);
        QCOMPARE(fixture.focusedObjectName(), u"c"_s);
    }

    void emptyScreenHasFocusUntilItemAppears()
    {
        FocusFixture fixture(focusable("a", {0, 0, 100, 100}, "visible: false"));
        QCOMPARE(fixture.focusedObjectName(), u"screen"_s);
        QCOMPARE(fixture.screen->focused(), nullptr);
        QVERIFY(!fixture.screen->move(Qt::Key_Down));
        const QSignalSpy changed(fixture.screen, &FocusScreen::focusedChanged);
        fixture.named("a").setVisible(true);
        QTRY_COMPARE(fixture.focusedObjectName(), u"a"_s);
        QCOMPARE(changed.count(), 1);
        delete &fixture.named("a");
        QCoreApplication::processEvents();
        QCOMPARE(fixture.focusedObjectName(), u"screen"_s);
        Focusable created;
        created.setObjectName(u"made"_s);
        created.setSize({100, 100});
        created.setParentItem(fixture.screen);
        QTRY_COMPARE(fixture.focusedObjectName(), u"made"_s);
    }

    void focusMovesToNearestItemOfSectionWhenItemDisappears_data()
    {
        rows<Change>({"change"}, {{"hidden", [](FocusFixture& fixture) { fixture.named("b").setVisible(false); }},
                                  {"disabled", [](FocusFixture& fixture) { fixture.named("b").setEnabled(false); }},
                                  {"width set to zero", [](FocusFixture& fixture) { fixture.named("b").setWidth(0); }},
                                  {"destroyed", [](FocusFixture& fixture) { delete &fixture.named("b"); }},
                                  {"removed from its parent",
                                   [](FocusFixture& fixture) { fixture.named("b").setParentItem(nullptr); }}});
    }

    void focusMovesToNearestItemOfSectionWhenItemDisappears()
    {
        QFETCH(Change, change);
        FocusFixture fixture(focusable("top", {400, 0, 100, 100}, "preferred: true") + row());
        fixture.focus("b");
        change(fixture);
        QTRY_COMPARE(fixture.focusedObjectName(), u"c"_s);
        QCOMPARE(fixture.screen->focused(), &fixture.named("c"));
    }

    void focusMovesToFirstItemWhenSectionDisappears()
    {
        FocusFixture fixture(focusable("top", {400, 0, 100, 100}) +
                             focusable("preferred", {0, 900, 100, 100}, "preferred: true") + row());
        fixture.focus("b");
        delete &fixture.named<FocusSection>("section");
        QTRY_COMPARE(fixture.focusedObjectName(), u"preferred"_s);
        fixture.named("preferred").setVisible(false);
        QTRY_COMPARE(fixture.focusedObjectName(), u"top"_s);
    }

    void pendingFocusChangeIsAppliedBeforeKeyIsHandled()
    {
        FocusFixture fixture(row());
        fixture.focus("c");
        fixture.named("c").setVisible(false);
        fixture.press(Qt::Key_Left);
        QCOMPARE(fixture.focusedObjectName(), u"a"_s);
    }

    void hiddenItemIsNotSelected()
    {
        FocusFixture fixture(row());
        const QSignalSpy selected(&fixture.named("a"), &Focusable::selected);
        fixture.named("a").setVisible(false);
        fixture.press(Qt::Key_Select);
        QCOMPARE(selected.count(), 0);
    }

    void screenGetsFocusWhenLastItemDisappears()
    {
        FocusFixture fixture(focusable("a", {0, 0, 100, 100}));
        fixture.named("a").setVisible(false);
        QTRY_COMPARE(fixture.focusedObjectName(), u"screen"_s);
        QCOMPARE(fixture.screen->focused(), nullptr);
    }

    void focusIsKeptWhenOtherItemsChange_data()
    {
        const Change neighboursDestroyed = [](FocusFixture& fixture) {
            delete &fixture.named("a");
            delete &fixture.named("c");
        };
        const Change movedElsewhere = [](FocusFixture& fixture) {
            fixture.named("b").setParentItem(&fixture.named<QQuickItem>("elsewhere"));
        };
        const Change movedOutAndBack = [](FocusFixture& fixture) {
            fixture.named("b").setParentItem(fixture.screen);
            fixture.named("b").setParentItem(&fixture.named<QQuickItem>("section"));
        };
        const Change hiddenAndShown = [](FocusFixture& fixture) {
            fixture.named("b").setVisible(false);
            fixture.named("b").setVisible(true);
        };
        const Change disabledAndEnabled = [](FocusFixture& fixture) {
            fixture.screen->setEnabled(false);
            fixture.screen->setEnabled(true);
        };
        rows<Change>({"change"}, {{"neighbours destroyed", neighboursDestroyed},
                                  {"moved to another parent", movedElsewhere},
                                  {"out of its section and back", movedOutAndBack},
                                  {"hidden and shown at once", hiddenAndShown},
                                  {"disabled and enabled at once", disabledAndEnabled}});
    }

    void focusIsKeptWhenOtherItemsChange()
    {
        QFETCH(Change, change);
        FocusFixture fixture(row() + qmlItem("Item", "elsewhere", {0, 600, 500, 100}, {}));
        fixture.focus("b");
        const QSignalSpy changed(fixture.screen, &FocusScreen::focusedChanged);
        change(fixture);
        QCoreApplication::processEvents();
        QCOMPARE(fixture.focusedObjectName(), u"b"_s);
        QCOMPARE(changed.count(), 0);
        fixture.press(Qt::Key_Up);
        QCOMPARE(fixture.screen->focused()->hasActiveFocus(), true);
    }

    void contentChangesWhileScreenIsDestroyed()
    {
        bool hasChanged = false;
        {
            FocusFixture fixture(qmlItem("Item", "removedFirst", {}, {}) + scrolledItem());
            fixture.focus("item");
            // The children are removed one by one, after the destructor of FocusScreen.
            connect(&fixture.named<QQuickItem>("removedFirst"), &QQuickItem::parentChanged, &fixture.area(),
                    [&hasChanged, &area = fixture.area()] {
                        area.setContentExtent(1500);
                        hasChanged = true;
                    });
        }
        QVERIFY(hasChanged);
    }

    void areaDoesNotTrackItemThatLostFocus()
    {
        FocusFixture fixture(scrolledItem());
        fixture.focus("item");
        const qreal position = fixture.area().targetPosition();
        QVERIFY(position > 0);
        fixture.named("item").setVisible(false);
        fixture.screen->ensureFocus();
        QVERIFY(!fixture.screen->focused());
        fixture.named("item").setY(100);
        fixture.area().setContentExtent(2100);
        QCOMPARE(fixture.area().targetPosition(), position);
    }

    void focusedChangedIsEmittedOnceWhenNoItemIsLeft()
    {
        FocusFixture fixture(focusable("only", {0, 0, 100, 100}));
        const QSignalSpy changes(fixture.screen, &FocusScreen::focusedChanged);
        delete &fixture.named("only");
        fixture.press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Left});
        QCOMPARE(changes.count(), 1);
    }
};

QUILLMERE_TEST(FocusKeepingTest, QGuiApplication)

} // namespace quillmere

#include "FocusKeepingTest.moc"
