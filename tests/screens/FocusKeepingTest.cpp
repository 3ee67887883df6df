#include "FocusFixture.h"

#include "FocusSection.h"
#include "ScrollArea.h"
#include "TestMain.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Change = std::function<void(FocusFixture&)>;
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
    FocusFixture fixture;
    FocusScreen& screen = fixture.showScreen({});
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
#include "FocusKeepingTest.moc"
