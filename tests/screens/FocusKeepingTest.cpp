#include "FocusStage.h"

#include "FocusSection.h"
#include "ScrollArea.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Change = std::function<void(FocusStage&)>;
Q_DECLARE_METATYPE(Change)

namespace {

/** An area that tells whether anyone hears of its length. */
class HeardArea : public ScrollArea
{
public:
    using ScrollArea::ScrollArea;
    bool isHeard() const { return isSignalConnected(QMetaMethod::fromSignal(&ScrollArea::contentExtentChanged)); }
};

} // namespace

/** What holds the focus as things come and go. */
class FocusKeepingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTopmostThenLeadingThingIsFirst();
    void thePreferredThingIsFirst();
    void aScreenThatGetsTheFocusGivesItToAThing();
    void aThingThatGetsTheFocusByItselfIsTheFocusedOne();
    void aScreenWithoutAnythingTakesTheKeysUntilSomethingComes();
    void theNearestInItsSectionFollowsAVanishedThing_data();
    void theNearestInItsSectionFollowsAVanishedThing();
    void theScreensFirstThingFollowsAVanishedSection();
    void aKeyFindsTheFocusInOrder();
    void aHiddenThingIsNotSelected();
    void theLastThingLeavesTheKeysToTheScreen();
    void theFocusStaysThroughChangesAroundIt_data();
    void theFocusStaysThroughChangesAroundIt();
    void aScreenThatGoesHearsNoMoreOfItsContents();
    void aScreenWithoutFocusHearsNothingOfItsContents();
    void thatThereIsNothingToFocusIsToldOnce();
};

void FocusKeepingTest::theTopmostThenLeadingThingIsFirst()
{
    FocusStage stage;
    stage.walk(stage.thing("below", {0, 300, 100, 100}) + stage.thing("trailing", {300, 0, 100, 100}) +
               stage.thing("leading", {100, 10, 100, 80}));
    QCOMPARE(stage.focused(), u"leading"_s);
}

void FocusKeepingTest::thePreferredThingIsFirst()
{
    FocusStage stage;
    stage.walk(stage.thing("a", {0, 0, 100, 100}) + stage.thing("b", {0, 200, 100, 100}, "preferred: true") +
               stage.thing("c", {0, 100, 100, 100}, "preferred: true"));
    QCOMPARE(stage.focused(), u"b"_s);
}

void FocusKeepingTest::aScreenThatGetsTheFocusGivesItToAThing()
{
    FocusStage stage;
    auto* const screen = stage.put(stage.item("FocusScreen", "screen", {0, 0, 100, 100}, FocusStage::row()));
    QCOMPARE(stage.focused(), QString());
    screen->setFocus(true);
    QCOMPARE(stage.focused(), u"a"_s);
}

void FocusKeepingTest::aThingThatGetsTheFocusByItselfIsTheFocusedOne()
{
    FocusStage stage;
    stage.walk(FocusStage::row());
    stage.named("b").forceActiveFocus();
    QCOMPARE(stage.screen().focused(), &stage.named("b"));
    stage.press(Qt::Key_Right);
    QCOMPARE(stage.focused(), u"c"_s);
}

void FocusKeepingTest::aScreenWithoutAnythingTakesTheKeysUntilSomethingComes()
{
    FocusStage stage;
    stage.walk(stage.thing("a", {0, 0, 100, 100}, "visible: false"));
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
    Focusable made;
    made.setObjectName(u"made"_s);
    made.setSize({100, 100});
    made.setParentItem(&stage.screen());
    QTRY_COMPARE(stage.focused(), u"made"_s);
}

void FocusKeepingTest::theNearestInItsSectionFollowsAVanishedThing_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("hidden") << Change([](FocusStage& stage) { stage.named("b").setVisible(false); });
    QTest::newRow("disabled") << Change([](FocusStage& stage) { stage.named("b").setEnabled(false); });
    QTest::newRow("without a size") << Change([](FocusStage& stage) { stage.named("b").setWidth(0); });
    QTest::newRow("destroyed") << Change([](FocusStage& stage) { delete &stage.named("b"); });
    QTest::newRow("taken out") << Change([](FocusStage& stage) { stage.named("b").setParentItem(nullptr); });
}

void FocusKeepingTest::theNearestInItsSectionFollowsAVanishedThing()
{
    QFETCH(Change, change);
    FocusStage stage;
    stage.walk(stage.thing("top", {400, 0, 100, 100}, "preferred: true") + FocusStage::row());
    stage.screen().focus(&stage.named("b"));
    change(stage);
    QTRY_COMPARE(stage.focused(), u"c"_s);
    QCOMPARE(stage.screen().focused(), &stage.named("c"));
}

void FocusKeepingTest::theScreensFirstThingFollowsAVanishedSection()
{
    FocusStage stage;
    stage.walk(stage.thing("top", {400, 0, 100, 100}) +
               stage.thing("preferred", {0, 900, 100, 100}, "preferred: true") + FocusStage::row());
    stage.screen().focus(&stage.named("b"));
    delete &stage.named<FocusSection>("row");
    QTRY_COMPARE(stage.focused(), u"preferred"_s);
    stage.named("preferred").setVisible(false);
    QTRY_COMPARE(stage.focused(), u"top"_s);
}

void FocusKeepingTest::aKeyFindsTheFocusInOrder()
{
    FocusStage stage;
    stage.walk(FocusStage::row());
    stage.screen().focus(&stage.named("c"));
    stage.named("c").setVisible(false);
    stage.press(Qt::Key_Left);
    QCOMPARE(stage.focused(), u"a"_s);
}

void FocusKeepingTest::aHiddenThingIsNotSelected()
{
    FocusStage stage;
    stage.walk(FocusStage::row());
    const QSignalSpy selected(&stage.named("a"), &Focusable::selected);
    stage.named("a").setVisible(false);
    stage.press(Qt::Key_Select);
    QCOMPARE(selected.count(), 0);
}

void FocusKeepingTest::theLastThingLeavesTheKeysToTheScreen()
{
    FocusStage stage;
    stage.walk(stage.thing("a", {0, 0, 100, 100}));
    stage.named("a").setVisible(false);
    QTRY_COMPARE(stage.focused(), u"screen"_s);
    QCOMPARE(stage.screen().focused(), nullptr);
}

void FocusKeepingTest::theFocusStaysThroughChangesAroundIt_data()
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
    QTest::newRow("hidden and shown in one turn") << Change([](FocusStage& stage) {
        stage.named("b").setVisible(false);
        stage.named("b").setVisible(true);
    });
    QTest::newRow("disabled and enabled in one turn") << Change([](FocusStage& stage) {
        stage.screen().setEnabled(false);
        stage.screen().setEnabled(true);
    });
}

void FocusKeepingTest::theFocusStaysThroughChangesAroundIt()
{
    QFETCH(Change, change);
    FocusStage stage;
    stage.walk(FocusStage::row() + stage.item("Item", "elsewhere", {0, 600, 500, 100}, {}));
    stage.screen().focus(&stage.named("b"));
    const QSignalSpy changed(&stage.screen(), &FocusScreen::focusedChanged);
    change(stage);
    QCoreApplication::processEvents();
    QCOMPARE(stage.focused(), u"b"_s);
    QCOMPARE(changed.count(), 0);
    stage.press(Qt::Key_Up);
    QCOMPARE(stage.screen().focused()->hasActiveFocus(), true);
}

void FocusKeepingTest::aScreenThatGoesHearsNoMoreOfItsContents()
{
    HeardArea area;
    auto screen = std::make_unique<FocusScreen>();
    area.setParentItem(screen.get());
    Focusable thing;
    thing.setParentItem(area.contentItem());
    screen->focus(&thing);
    QVERIFY(area.isHeard());
    bool wasHeard = true;
    connect(&area, &QQuickItem::parentChanged, this, [&] { wasHeard = area.isHeard(); });
    screen.reset();
    QVERIFY(!wasHeard);
}

void FocusKeepingTest::aScreenWithoutFocusHearsNothingOfItsContents()
{
    FocusStage stage;
    FocusScreen& screen = stage.walk({});
    HeardArea area;
    area.setSize({500, 500});
    area.setParentItem(&screen);
    Focusable thing;
    thing.setSize({100, 100});
    thing.setParentItem(area.contentItem());
    screen.focus(&thing);
    QVERIFY(area.isHeard());
    thing.setVisible(false);
    screen.keepFocus();
    QVERIFY(!screen.focused());
    QVERIFY(!area.isHeard());
}

void FocusKeepingTest::thatThereIsNothingToFocusIsToldOnce()
{
    FocusStage stage;
    FocusScreen& screen = stage.walk(stage.thing("only", {0, 0, 100, 100}));
    const QSignalSpy told(&screen, &FocusScreen::focusedChanged);
    delete &stage.named("only");
    stage.press(Qt::Key_Down);
    stage.press(Qt::Key_Down);
    stage.press(Qt::Key_Left);
    QCOMPARE(told.count(), 1);
}

QTEST_MAIN(FocusKeepingTest)
#include "FocusKeepingTest.moc"
