#include "FrontFixture.h"
#include "StationMotion.h"
#include "StationPalette.h"
#include "TestMain.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

const QString statusPath = u"/api/tv/status"_s;

const QString coverScreen = u"Component { FocusScreen { "
                            "Rectangle { anchors.fill: parent; color: 'teal' } } }"_s;

} // namespace

class LandingViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void statusIsRequestedWhenScreenAppears();
    void playPauseRequestsStatusAgain();
    void initialFocusIsOnNewsDoor();
    void leftAndRightMoveFocusBetweenDoors();
    void focusedDoorIsScaledUp();
    void onlyFocusedDoorHasShadow();
    void liftAnimationOfDoorTakes150Milliseconds();
    void selectedDoorSetsItsFlagWhenItHasNoScreen();
    void screenOfDoorCoversFrontScreenUntilBackIsPressed();
    void backDuringSlideInOnlyDismissesCover();
    void coveredFrontScreenIsNotDrawn();
    void playPauseIsNotHandledWhileCovered();
    void secondBackWithinThreeSecondsQuits();
    void doorsShowStatusOfHub();
    void statusLineShowsStateOfStore();
    void newsDoorShowsLiveDuringBroadcast();
    void doorHasAccessibleRoleNameAndAction();
};

void LandingViewTest::statusIsRequestedWhenScreenAppears()
{
    FrontFixture fixture;
    QCOMPARE(fixture.statusRequests(), 1);
    QVERIFY(fixture.showsText(u"Tuning in…"_s));
}

void LandingViewTest::playPauseRequestsStatusAgain()
{
    FrontFixture fixture;
    fixture.press(Qt::Key_MediaTogglePlayPause);
    QCOMPARE(fixture.statusRequests(), 2);
    fixture.press(Qt::Key_MediaPlay);
    QCOMPARE(fixture.statusRequests(), 3);
}

void LandingViewTest::initialFocusIsOnNewsDoor()
{
    FrontFixture fixture;
    QVERIFY(fixture.newsDoor()->hasActiveFocus());
    QVERIFY(!fixture.storeDoor()->hasActiveFocus());
}

void LandingViewTest::leftAndRightMoveFocusBetweenDoors()
{
    FrontFixture fixture;
    fixture.press(Qt::Key_Left);
    QVERIFY(fixture.newsDoor()->hasActiveFocus());
    fixture.press(Qt::Key_Right);
    QVERIFY(fixture.storeDoor()->hasActiveFocus());
    fixture.press(Qt::Key_Right);
    fixture.press(Qt::Key_Up);
    fixture.press(Qt::Key_Down);
    QVERIFY(fixture.storeDoor()->hasActiveFocus());
    fixture.press(Qt::Key_Left);
    QVERIFY(fixture.newsDoor()->hasActiveFocus());
}

void LandingViewTest::focusedDoorIsScaledUp()
{
    FrontFixture fixture;
    fixture.waitUntilIdle();
    const auto width = [](QQuickItem* door) { return TestScreen::area(TestScreen::first(door, "CardPlate")).width(); };
    QCOMPARE(width(fixture.newsDoor()), 620 * 1.06);
    QCOMPARE(width(fixture.storeDoor()), 620.0);
    fixture.press(Qt::Key_Right);
    QTRY_COMPARE(width(fixture.storeDoor()), 620 * 1.06);
    QTRY_COMPARE(width(fixture.newsDoor()), 620.0);
}

void LandingViewTest::onlyFocusedDoorHasShadow()
{
    FrontFixture fixture;
    const auto shadow = [](QQuickItem* door) {
        const QQuickItem* loader = TestScreen::first(door, "QQuickLoader");
        return loader->childItems().isEmpty() ? 0 : loader->opacity();
    };
    QTRY_COMPARE(shadow(fixture.newsDoor()), 1.0);
    QCOMPARE(shadow(fixture.storeDoor()), 0.0);
    fixture.press(Qt::Key_Right);
    QTRY_COMPARE(shadow(fixture.storeDoor()), 1.0);
    QTRY_COMPARE(shadow(fixture.newsDoor()), 0.0);
}

void LandingViewTest::liftAnimationOfDoorTakes150Milliseconds()
{
    FrontFixture fixture;
    fixture.press(Qt::Key_Right);
    QCOMPARE(StationMotion::liftTime(), 150);
    for (QQuickItem* door : {fixture.newsDoor(), fixture.storeDoor()}) {
        // One animation for the plate and its shadow.
        QCOMPARE(TestScreen::animationTimes(door).count(StationMotion::liftTime()), 1);
    }
}

void LandingViewTest::selectedDoorSetsItsFlagWhenItHasNoScreen()
{
    FrontFixture fixture;
    QCOMPARE(fixture.view->property("showNews").toBool(), false);
    QCOMPARE(fixture.view->property("showStore").toBool(), false);
    fixture.press(Qt::Key_Select);
    QCOMPARE(fixture.view->property("showNews").toBool(), true);
    QCOMPARE(fixture.view->property("showStore").toBool(), false);
    fixture.press(Qt::Key_Right);
    fixture.press(Qt::Key_Select);
    QCOMPARE(fixture.view->property("showStore").toBool(), true);
    QCOMPARE(fixture.isCovered(), false);
}

void LandingViewTest::screenOfDoorCoversFrontScreenUntilBackIsPressed()
{
    FrontFixture fixture({1920, 1080}, u"newsScreen: %1 shopScreen: %1"_s.arg(coverScreen));
    for (const bool shop : {true, false, true}) {
        QQuickItem* door = shop ? fixture.storeDoor() : fixture.newsDoor();
        fixture.press(shop ? Qt::Key_Right : Qt::Key_Left);
        fixture.press(Qt::Key_Select);
        QCOMPARE(fixture.isCovered(), true);
        QVERIFY(!door->hasActiveFocus());
        QCOMPARE(fixture.picture().pixelColor(20, 20), QColor(u"teal"_s));
        fixture.press(Qt::Key_Back);
        QCOMPARE(fixture.isCovered(), false);
        QCOMPARE(fixture.view->property(shop ? "showStore" : "showNews").toBool(), false);
        QVERIFY(door->hasActiveFocus());
        QVERIFY(!fixture.showsText(u"Press back again to switch the set off"_s));
    }
    QCOMPARE(fixture.statusRequests(), 1);
}

void LandingViewTest::backDuringSlideInOnlyDismissesCover()
{
    FrontFixture fixture({1920, 1080}, u"newsScreen: %1"_s.arg(coverScreen));
    const QString notice = u"Press back again to switch the set off"_s;
    fixture.press(Qt::Key_Select);
    fixture.press(Qt::Key_Back);
    QVERIFY(!fixture.isCovered());
    QVERIFY(fixture.newsDoor()->hasActiveFocus());
    QVERIFY(!fixture.showsText(notice));
    // While the cover still slides out, keys go to the front screen.
    fixture.press(Qt::Key_Right);
    QVERIFY(fixture.storeDoor()->hasActiveFocus());
    fixture.press(Qt::Key_Back);
    QVERIFY(fixture.showsText(notice));
}

void LandingViewTest::coveredFrontScreenIsNotDrawn()
{
    FrontFixture fixture({1920, 1080}, u"newsScreen: %1"_s.arg(coverScreen));
    fixture.setNews(true, u"Harbour Council"_s);
    fixture.press(Qt::Key_Select);
    QTRY_VERIFY(!fixture.newsDoor()->isVisible());
    fixture.waitUntilIdle();
    const int frames = fixture.frames();
    QTest::qWait(500); // the lit lamp would draw its pulse in this time
    QCOMPARE(fixture.frames(), frames);
    fixture.press(Qt::Key_Back);
    QVERIFY(fixture.newsDoor()->isVisible());
    QTRY_VERIFY(fixture.frames() > frames + 5);
}

void LandingViewTest::playPauseIsNotHandledWhileCovered()
{
    FrontFixture fixture({1920, 1080}, u"shopScreen: %1"_s.arg(coverScreen));
    fixture.press(Qt::Key_Right);
    fixture.press(Qt::Key_Select);
    fixture.press(Qt::Key_MediaTogglePlayPause);
    QCOMPARE(fixture.statusRequests(), 1);
}

void LandingViewTest::secondBackWithinThreeSecondsQuits()
{
    FrontFixture fixture;
    QSignalSpy quitRequested(fixture.view, SIGNAL(quitRequested()));
    const QString notice = u"Press back again to switch the set off"_s;
    QVERIFY(!fixture.showsText(notice));
    fixture.press(Qt::Key_Back);
    QVERIFY(fixture.showsText(notice));
    fixture.clock.advance(3s);
    QVERIFY(!fixture.showsText(notice));
    fixture.press(Qt::Key_Back);
    QCOMPARE(quitRequested.size(), 0);
    QVERIFY(fixture.showsText(notice));
    fixture.clock.advance(2999ms);
    fixture.press(Qt::Key_Back);
    QCOMPARE(quitRequested.size(), 1);
    QVERIFY(!fixture.showsText(notice));
    QCOMPARE(fixture.clock.pendingTimers(), 0);
}

void LandingViewTest::doorsShowStatusOfHub()
{
    FrontFixture fixture;
    QVERIFY(fixture.showsText(u"Checking what's on the shelf…"_s));
    QVERIFY(fixture.showsText(u"The tower is dark. Colour bars and a countdown until it isn't."_s));
    fixture.http.answer(fixture.http.waitingFor(statusPath), 200,
                        R"({"news": {"tower_live": true, "program_title": "Harbour <b>Council</b>"},
                          "rewindery": {"tapes": 1, "markets": [{"slug": "a", "name": "A", "tapes": 1}]}})");
    QTRY_VERIFY(fixture.showsText(u"1 tapes in stock · 1 market · every one plays right here"_s));
    QVERIFY(fixture.showsText(u"Harbour <b>Council</b>"_s));
    fixture.setNews(true, {});
    QVERIFY(fixture.showsText(u"The tower is lit — tune in."_s));
    fixture.setNews(false, {}, u"Tue 5 PM"_s);
    QVERIFY(fixture.showsText(u"Next broadcast · Tue 5 PM"_s));
}

void LandingViewTest::statusLineShowsStateOfStore()
{
    FrontFixture fixture;
    QQuickItem* item = fixture.text(u"Tuning in…"_s);
    QVERIFY(item);
    QCOMPARE(item->property("font").value<QFont>().pixelSize(), 24);
    fixture.store->setLastError(u"The hub answered 503."_s);
    QCOMPARE(item->property("text").toString(), u"The hub answered 503."_s);
    QCOMPARE(item->property("color").value<QColor>(), StationPalette::onAirRed());
    fixture.store->setLastError({});
    fixture.store->setHasLoadedOnce(true);
    QCOMPARE(item->property("text").toString(), u"Press ▶︎ to refresh"_s);
    QCOMPARE(item->property("font").value<QFont>().pixelSize(), 22);
    QCOMPARE(item->property("color").value<QColor>(), StationPalette::faded(StationPalette::cream(), 0.4));
    QCOMPARE(TestScreen::area(item).height(), 40.0);
}

void LandingViewTest::newsDoorShowsLiveDuringBroadcast()
{
    FrontFixture fixture;
    QQuickItem* bars = TestScreen::first(fixture.newsDoor(), "MiniColorBars");
    QVERIFY(bars->isVisible());
    QCOMPARE(bars->opacity(), 0.85);
    QVERIFY(!fixture.showsText(u"LIVE"_s));
    QVERIFY(fixture.showsText(u"OFF AIR"_s));
    QVERIFY(fixture.showsText(u"STANDBY"_s));
    fixture.setNews(true, u"Harbour Council"_s);
    QVERIFY(!bars->isVisible());
    QVERIFY(fixture.showsText(u"LIVE"_s));
    QVERIFY(fixture.showsText(u"ON AIR"_s));
    QVERIFY(!fixture.showsText(u"STANDBY"_s));
    fixture.setNews(false, {});
    QVERIFY(fixture.showsText(u"OFF AIR"_s));
}

void LandingViewTest::doorHasAccessibleRoleNameAndAction()
{
    FrontFixture fixture;
    QAccessible::setActive(true);
    QAccessibleInterface* door = QAccessible::queryAccessibleInterface(fixture.storeDoor());
    QVERIFY(door);
    QCOMPARE(door->role(), QAccessible::Button);
    QCOMPARE(door->text(QAccessible::Name), u"REWINDERY"_s);
    QCOMPARE(door->text(QAccessible::Description), u"Checking what's on the shelf…"_s);
    door->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(fixture.view->property("showStore").toBool(), true);
}

QUILLMERE_TEST(LandingViewTest, QGuiApplication)

} // namespace quillmere

#include "LandingViewTest.moc"
