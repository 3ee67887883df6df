#include "FocusFixture.h"

#include "FocusSection.h"
#include "ScrollArea.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace quillmere {

using Change = std::function<void(FocusFixture&)>;

namespace {

/** A scroll area "area" with an item "item" far below its viewport. */
QString scrolledItem()
{
    return FocusFixture::item("ScrollArea", "area", {0, 0, 500, 500},
                              u"contentExtent: 2000; "_s + FocusFixture::focusable("item", {0, 1500, 100, 100}));
}

} // namespace

/** Focus when items appear and disappear. */
class FocusKeepingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initialFocusIsTopmostThenLeadingItem();
    void initialFocusIsFirstPreferredItem();
    void screenPassesFocusToItsFirstItem();
    void itemWithForcedActiveFocusIsFocusedItem();
    void emptyScreenHasFocusUntilItemAppears();
    void focusMovesToNearestItemOfSectionWhenItemDisappears_data();
    void focusMovesToNearestItemOfSectionWhenItemDisappears();
    void focusMovesToFirstItemWhenSectionDisappears();
    void pendingFocusChangeIsAppliedBeforeKeyIsHandled();
    void hiddenItemIsNotSelected();
    void screenGetsFocusWhenLastItemDisappears();
    void focusIsKeptWhenOtherItemsChange_data();
    void focusIsKeptWhenOtherItemsChange();
    void contentChangesWhileScreenIsDestroyed();
    void areaDoesNotTrackItemThatLostFocus();
    void focusedChangedIsEmittedOnceWhenNoItemIsLeft();
};

void FocusKeepingTest::initialFocusIsTopmostThenLeadingItem()
{
    FocusFixture fixture;
    fixture.showScreen(fixture.focusable("below", {0, 300, 100, 100}) +
                       fixture.focusable("trailing", {300, 0, 100, 100}) +
                       fixture.focusable("leading", {100, 10, 100, 80}));
    QCOMPARE(fixture.focusedObjectName(), u"leading"_s);
}

void FocusKeepingTest::initialFocusIsFirstPreferredItem()
{
    FocusFixture fixture;
    fixture.showScreen(fixture.focusable("a", {0, 0, 100, 100}) +
                       fixture.focusable("b", {0, 200, 100, 100}, "preferred: true") +
                       fixture.focusable("c", {0, 100, 100, 100}, "preferred: true"));
    QCOMPARE(fixture.focusedObjectName(), u"b"_s);
}

void FocusKeepingTest::screenPassesFocusToItsFirstItem()
{
    FocusFixture fixture;
    auto* const screen = fixture.load(fixture.item("FocusScreen", "screen", {0, 0, 100, 100}, FocusFixture::row()));
    QCOMPARE(fixture.focusedObjectName(), QString());
    screen->setFocus(true);
    QCOMPARE(fixture.focusedObjectName(), u"a"_s);
}

void FocusKeepingTest::itemWithForcedActiveFocusIsFocusedItem()
{
    FocusFixture fixture;
    fixture.showScreen(FocusFixture::row());
    fixture.named("b").forceActiveFocus();
    QCOMPARE(fixture.screen().focused(), &fixture.named("b"));
    fixture.press(Qt::Key_Right);
    QCOMPARE(fixture.focusedObjectName(), u"c"_s);
}

void FocusKeepingTest::emptyScreenHasFocusUntilItemAppears()
{
    FocusFixture fixture;
    fixture.showScreen(fixture.focusable("a", {0, 0, 100, 100}, "visible: false"));
    QCOMPARE(fixture.focusedObjectName(), u"screen"_s);
    QCOMPARE(fixture.screen().focused(), nullptr);
    QVERIFY(!fixture.screen().move(Qt::Key_Down));
    const QSignalSpy changed(&fixture.screen(), &FocusScreen::focusedChanged);
    fixture.named("a").setVisible(true);
    QTRY_COMPARE(fixture.focusedObjectName(), u"a"_s);
    QCOMPARE(changed.count(), 1);
    delete &fixture.named("a");
    QCoreApplication::processEvents();
    QCOMPARE(fixture.focusedObjectName(), u"screen"_s);
    Focusable created;
    created.setObjectName(u"made"_s);
    created.setSize({100, 100});
    created.setParentItem(&fixture.screen());
    QTRY_COMPARE(fixture.focusedObjectName(), u"made"_s);
}

void FocusKeepingTest::focusMovesToNearestItemOfSectionWhenItemDisappears_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("hidden") << Change([](FocusFixture& fixture) { fixture.named("b").setVisible(false); });
    QTest::newRow("disabled") << Change([](FocusFixture& fixture) { fixture.named("b").setEnabled(false); });
    QTest::newRow("width set to zero") << Change([](FocusFixture& fixture) { fixture.named("b").setWidth(0); });
    QTest::newRow("destroyed") << Change([](FocusFixture& fixture) { delete &fixture.named("b"); });
    QTest::newRow("removed from its parent")
        << Change([](FocusFixture& fixture) { fixture.named("b").setParentItem(nullptr); });
}

void FocusKeepingTest::focusMovesToNearestItemOfSectionWhenItemDisappears()
{
    QFETCH(Change, change);
    FocusFixture fixture;
    fixture.showScreen(fixture.focusable("top", {400, 0, 100, 100}, "preferred: true") + FocusFixture::row());
    fixture.screen().focus(&fixture.named("b"));
    change(fixture);
    QTRY_COMPARE(fixture.focusedObjectName(), u"c"_s);
    QCOMPARE(fixture.screen().focused(), &fixture.named("c"));
}

void FocusKeepingTest::focusMovesToFirstItemWhenSectionDisappears()
{
    FocusFixture fixture;
    fixture.showScreen(fixture.focusable("top", {400, 0, 100, 100}) +
                       fixture.focusable("preferred", {0, 900, 100, 100}, "preferred: true") + FocusFixture::row());
    fixture.screen().focus(&fixture.named("b"));
    delete &fixture.named<FocusSection>("row");
    QTRY_COMPARE(fixture.focusedObjectName(), u"preferred"_s);
    fixture.named("preferred").setVisible(false);
    QTRY_COMPARE(fixture.focusedObjectName(), u"top"_s);
}

void FocusKeepingTest::pendingFocusChangeIsAppliedBeforeKeyIsHandled()
{
    FocusFixture fixture;
    fixture.showScreen(FocusFixture::row());
    fixture.screen().focus(&fixture.named("c"));
    fixture.named("c").setVisible(false);
    fixture.press(Qt::Key_Left);
    QCOMPARE(fixture.focusedObjectName(), u"a"_s);
}

void FocusKeepingTest::hiddenItemIsNotSelected()
{
    FocusFixture fixture;
    fixture.showScreen(FocusFixture::row());
    const QSignalSpy selected(&fixture.named("a"), &Focusable::selected);
    fixture.named("a").setVisible(false);
    fixture.press(Qt::Key_Select);
    QCOMPARE(selected.count(), 0);
}

void FocusKeepingTest::screenGetsFocusWhenLastItemDisappears()
{
    FocusFixture fixture;
    fixture.showScreen(fixture.focusable("a", {0, 0, 100, 100}));
    fixture.named("a").setVisible(false);
    QTRY_COMPARE(fixture.focusedObjectName(), u"screen"_s);
    QCOMPARE(fixture.screen().focused(), nullptr);
}

void FocusKeepingTest::focusIsKeptWhenOtherItemsChange_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("neighbours destroyed") << Change([](FocusFixture& fixture) {
        delete &fixture.named("a");
        delete &fixture.named("c");
    });
    QTest::newRow("moved to another parent") << Change(
        [](FocusFixture& fixture) { fixture.named("b").setParentItem(&fixture.named<QQuickItem>("elsewhere")); });
    QTest::newRow("out of its section and back") << Change([](FocusFixture& fixture) {
        fixture.named("b").setParentItem(&fixture.screen());
        fixture.named("b").setParentItem(&fixture.named<QQuickItem>("row"));
    });
    QTest::newRow("hidden and shown at once") << Change([](FocusFixture& fixture) {
        fixture.named("b").setVisible(false);
        fixture.named("b").setVisible(true);
    });
    QTest::newRow("disabled and enabled at once") << Change([](FocusFixture& fixture) {
        fixture.screen().setEnabled(false);
        fixture.screen().setEnabled(true);
    });
}

void FocusKeepingTest::focusIsKeptWhenOtherItemsChange()
{
    QFETCH(Change, change);
    FocusFixture fixture;
    fixture.showScreen(FocusFixture::row() + fixture.item("Item", "elsewhere", {0, 600, 500, 100}, {}));
    fixture.screen().focus(&fixture.named("b"));
    const QSignalSpy changed(&fixture.screen(), &FocusScreen::focusedChanged);
    change(fixture);
    QCoreApplication::processEvents();
    QCOMPARE(fixture.focusedObjectName(), u"b"_s);
    QCOMPARE(changed.count(), 0);
    fixture.press(Qt::Key_Up);
    QCOMPARE(fixture.screen().focused()->hasActiveFocus(), true);
}

void FocusKeepingTest::contentChangesWhileScreenIsDestroyed()
{
    bool hasChanged = false;
    {
        FocusFixture fixture;
        fixture.showScreen(FocusFixture::item("Item", "removedFirst", {}, {}) + scrolledItem());
        fixture.screen().focus(&fixture.named("item"));
        auto& area = fixture.named<ScrollArea>("area");
        // The children are removed one by one, after the destructor of FocusScreen.
        connect(&fixture.named<QQuickItem>("removedFirst"), &QQuickItem::parentChanged, &area, [&] {
            area.setContentExtent(1500);
            hasChanged = true;
        });
    }
    QVERIFY(hasChanged);
}

void FocusKeepingTest::areaDoesNotTrackItemThatLostFocus()
{
    FocusFixture fixture;
    FocusScreen& screen = fixture.showScreen(scrolledItem());
    auto& item = fixture.named("item");
    auto& area = fixture.named<ScrollArea>("area");
    screen.focus(&item);
    const qreal position = area.targetPosition();
    QVERIFY(position > 0);
    item.setVisible(false);
    screen.ensureFocus();
    QVERIFY(!screen.focused());
    item.setY(100);
    area.setContentExtent(2100);
    QCOMPARE(area.targetPosition(), position);
}

void FocusKeepingTest::focusedChangedIsEmittedOnceWhenNoItemIsLeft()
{
    FocusFixture fixture;
    FocusScreen& screen = fixture.showScreen(fixture.focusable("only", {0, 0, 100, 100}));
    const QSignalSpy changes(&screen, &FocusScreen::focusedChanged);
    delete &fixture.named("only");
    fixture.press(Qt::Key_Down);
    fixture.press(Qt::Key_Down);
    fixture.press(Qt::Key_Left);
    QCOMPARE(changes.count(), 1);
}

QUILLMERE_TEST(FocusKeepingTest, QGuiApplication)

} // namespace quillmere

#include "FocusKeepingTest.moc"
