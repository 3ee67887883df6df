#include "FocusStage.h"

#include "FocusSection.h"
#include "ScrollArea.h"
#include "TestMain.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Change = std::function<void(FocusStage&)>;
Q_DECLARE_METATYPE(Change)

namespace {

/** A scroll area that reports whether anything is connected to contentExtentChanged. */
class ObservedArea : public ScrollArea
{
public:
    using ScrollArea::ScrollArea;
    bool isObserved() const { return isSignalConnected(QMetaMethod::fromSignal(&ScrollArea::contentExtentChanged)); }
};

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
    void screenDisconnectsFromContentsWhenDestroyed();
    void screenWithoutFocusedItemIsNotConnectedToContents();
    void focusedChangedIsEmittedOnceWhenNoItemIsLeft();
};

void FocusKeepingTest::initialFocusIsTopmostThenLeadingItem()
{
    FocusStage stage;
    stage.showScreen(stage.focusable("below", {0, 300, 100, 100}) + stage.focusable("trailing", {300, 0, 100, 100}) +
                     stage.focusable("leading", {100, 10, 100, 80}));
    QCOMPARE(stage.focused(), u"leading"_s);
}

void FocusKeepingTest::initialFocusIsFirstPreferredItem()
{
    FocusStage stage;
    stage.showScreen(stage.focusable("a", {0, 0, 100, 100}) +
                     stage.focusable("b", {0, 200, 100, 100}, "preferred: true") +
                     stage.focusable("c", {0, 100, 100, 100}, "preferred: true"));
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusKeepingTest::screenPassesFocusToItsFirstItem()
{
    FocusStage stage;
    auto* const screen = stage.load(stage.item("FocusScreen", "screen", {0, 0, 100, 100}, FocusStage::row()));
    QCOMPARE(stage.focused(), QString());
    screen->setFocus(true);
    QCOMPARE(stage.focused(), u"a"_s);
}

void FocusKeepingTest::itemWithForcedActiveFocusIsFocusedItem()
{
    FocusStage stage;
    stage.showScreen(FocusStage::row());
    stage.named("b").forceActiveFocus();
    QCOMPARE(stage.screen().focused(), &stage.named("b"));
    stage.press(Qt::Key_Right);
    QCOMPARE(stage.focused(), u"c"_s);
}

void FocusKeepingTest::emptyScreenHasFocusUntilItemAppears()
{
    FocusStage stage;
    stage.showScreen(stage.focusable("a", {0, 0, 100, 100}, "visible: false"));
    QCOMPARE(stage.focused(), u"screen"_s);
    QCOMPARE(stage.screen().focused(), nullptr);
    QVERIFY(!stage.screen().move(Qt::Key_Down));
    const QSignalSpy changed(&stage.screen(), &FocusScreen::focusedChanged);
    stage.named("a").setVisible(true);
    QTRY_COMPARE(stage.focused(), u"a"_s);
    QCOMPARE(changed.count(), 1);
    delete &stage.named("a");
    QCoreApplication::processEvents();
    QCOMPARE(stage.focused(), u"screen"_s);
    Focusable created;
    created.setObjectName(u"made"_s);
    created.setSize({100, 100});
    created.setParentItem(&stage.screen());
    QTRY_COMPARE(stage.focused(), u"made"_s);
}

void FocusKeepingTest::focusMovesToNearestItemOfSectionWhenItemDisappears_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("hidden") << Change([](FocusStage& stage) { stage.named("b").setVisible(false); });
    QTest::newRow("disabled") << Change([](FocusStage& stage) { stage.named("b").setEnabled(false); });
    QTest::newRow("width set to zero") << Change([](FocusStage& stage) { stage.named("b").setWidth(0); });
    QTest::newRow("destroyed") << Change([](FocusStage& stage) { delete &stage.named("b"); });
    QTest::newRow("removed from its parent")
        << Change([](FocusStage& stage) { stage.named("b").setParentItem(nullptr); });
}

void FocusKeepingTest::focusMovesToNearestItemOfSectionWhenItemDisappears()
{
    QFETCH(Change, change);
    FocusStage stage;
    stage.showScreen(stage.focusable("top", {400, 0, 100, 100}, "preferred: true") + FocusStage::row());
    stage.screen().focus(&stage.named("b"));
    change(stage);
    QTRY_COMPARE(stage.focused(), u"c"_s);
    QCOMPARE(stage.screen().focused(), &stage.named("c"));
}

void FocusKeepingTest::focusMovesToFirstItemWhenSectionDisappears()
{
    FocusStage stage;
    stage.showScreen(stage.focusable("top", {400, 0, 100, 100}) +
                     stage.focusable("preferred", {0, 900, 100, 100}, "preferred: true") + FocusStage::row());
    stage.screen().focus(&stage.named("b"));
    delete &stage.named<FocusSection>("row");
    QTRY_COMPARE(stage.focused(), u"preferred"_s);
    stage.named("preferred").setVisible(false);
    QTRY_COMPARE(stage.focused(), u"top"_s);
}

void FocusKeepingTest::pendingFocusChangeIsAppliedBeforeKeyIsHandled()
{
    FocusStage stage;
    stage.showScreen(FocusStage::row());
    stage.screen().focus(&stage.named("c"));
    stage.named("c").setVisible(false);
    stage.press(Qt::Key_Left);
    QCOMPARE(stage.focused(), u"a"_s);
}

void FocusKeepingTest::hiddenItemIsNotSelected()
{
    FocusStage stage;
    stage.showScreen(FocusStage::row());
    const QSignalSpy selected(&stage.named("a"), &Focusable::selected);
    stage.named("a").setVisible(false);
    stage.press(Qt::Key_Select);
    QCOMPARE(selected.count(), 0);
}

void FocusKeepingTest::screenGetsFocusWhenLastItemDisappears()
{
    FocusStage stage;
    stage.showScreen(stage.focusable("a", {0, 0, 100, 100}));
    stage.named("a").setVisible(false);
    QTRY_COMPARE(stage.focused(), u"screen"_s);
    QCOMPARE(stage.screen().focused(), nullptr);
}

void FocusKeepingTest::focusIsKeptWhenOtherItemsChange_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("neighbours destroyed") << Change([](FocusStage& stage) {
        delete &stage.named("a");
        delete &stage.named("c");
    });
    QTest::newRow("moved to another parent")
        << Change([](FocusStage& stage) { stage.named("b").setParentItem(&stage.named<QQuickItem>("elsewhere")); });
    QTest::newRow("out of its section and back") << Change([](FocusStage& stage) {
        stage.named("b").setParentItem(&stage.screen());
        stage.named("b").setParentItem(&stage.named<QQuickItem>("row"));
    });
    QTest::newRow("hidden and shown at once") << Change([](FocusStage& stage) {
        stage.named("b").setVisible(false);
        stage.named("b").setVisible(true);
    });
    QTest::newRow("disabled and enabled at once") << Change([](FocusStage& stage) {
        stage.screen().setEnabled(false);
        stage.screen().setEnabled(true);
    });
}

void FocusKeepingTest::focusIsKeptWhenOtherItemsChange()
{
    QFETCH(Change, change);
    FocusStage stage;
    stage.showScreen(FocusStage::row() + stage.item("Item", "elsewhere", {0, 600, 500, 100}, {}));
    stage.screen().focus(&stage.named("b"));
    const QSignalSpy changed(&stage.screen(), &FocusScreen::focusedChanged);
    change(stage);
    QCoreApplication::processEvents();
    QCOMPARE(stage.focused(), u"b"_s);
    QCOMPARE(changed.count(), 0);
    stage.press(Qt::Key_Up);
    QCOMPARE(stage.screen().focused()->hasActiveFocus(), true);
}

void FocusKeepingTest::screenDisconnectsFromContentsWhenDestroyed()
{
    ObservedArea area;
    auto screen = std::make_unique<FocusScreen>();
    area.setParentItem(screen.get());
    Focusable item;
    item.setParentItem(area.contentItem());
    screen->focus(&item);
    QVERIFY(area.isObserved());
    bool wasObserved = true;
    connect(&area, &QQuickItem::parentChanged, this, [&] { wasObserved = area.isObserved(); });
    screen.reset();
    QVERIFY(!wasObserved);
}

void FocusKeepingTest::screenWithoutFocusedItemIsNotConnectedToContents()
{
    FocusStage stage;
    FocusScreen& screen = stage.showScreen({});
    ObservedArea area;
    area.setSize({500, 500});
    area.setParentItem(&screen);
    Focusable item;
    item.setSize({100, 100});
    item.setParentItem(area.contentItem());
    screen.focus(&item);
    QVERIFY(area.isObserved());
    item.setVisible(false);
    screen.ensureFocus();
    QVERIFY(!screen.focused());
    QVERIFY(!area.isObserved());
}

void FocusKeepingTest::focusedChangedIsEmittedOnceWhenNoItemIsLeft()
{
    FocusStage stage;
    FocusScreen& screen = stage.showScreen(stage.focusable("only", {0, 0, 100, 100}));
    const QSignalSpy changes(&screen, &FocusScreen::focusedChanged);
    delete &stage.named("only");
    stage.press(Qt::Key_Down);
    stage.press(Qt::Key_Down);
    stage.press(Qt::Key_Left);
    QCOMPARE(changes.count(), 1);
}

QUILLMERE_TEST(FocusKeepingTest, QGuiApplication)
#include "FocusKeepingTest.moc"
