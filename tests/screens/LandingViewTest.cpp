#include "FrontHouse.h"
#include "StationMotion.h"
#include "StationPalette.h"
#include "TestMain.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

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
    FrontHouse house;
    QCOMPARE(house.statusRequests(), 1);
    QVERIFY(house.shows(u"Tuning in…"_s));
}

void LandingViewTest::playPauseRequestsStatusAgain()
{
    FrontHouse house;
    house.stage.press(Qt::Key_MediaTogglePlayPause);
    QCOMPARE(house.statusRequests(), 2);
    house.stage.press(Qt::Key_MediaPlay);
    QCOMPARE(house.statusRequests(), 3);
}

void LandingViewTest::initialFocusIsOnNewsDoor()
{
    FrontHouse house;
    QVERIFY(house.newsDoor()->hasActiveFocus());
    QVERIFY(!house.storeDoor()->hasActiveFocus());
}

void LandingViewTest::leftAndRightMoveFocusBetweenDoors()
{
    FrontHouse house;
    house.stage.press(Qt::Key_Left);
    QVERIFY(house.newsDoor()->hasActiveFocus());
    house.stage.press(Qt::Key_Right);
    QVERIFY(house.storeDoor()->hasActiveFocus());
    house.stage.press(Qt::Key_Right);
    house.stage.press(Qt::Key_Up);
    house.stage.press(Qt::Key_Down);
    QVERIFY(house.storeDoor()->hasActiveFocus());
    house.stage.press(Qt::Key_Left);
    QVERIFY(house.newsDoor()->hasActiveFocus());
}

void LandingViewTest::focusedDoorIsScaledUp()
{
    FrontHouse house;
    house.stage.waitUntilIdle();
    const auto width = [](QQuickItem* door) { return Stage::area(Stage::first(door, "CardPlate")).width(); };
    QCOMPARE(width(house.newsDoor()), 620 * 1.06);
    QCOMPARE(width(house.storeDoor()), 620.0);
    house.stage.press(Qt::Key_Right);
    QTRY_COMPARE(width(house.storeDoor()), 620 * 1.06);
    QTRY_COMPARE(width(house.newsDoor()), 620.0);
}

void LandingViewTest::onlyFocusedDoorHasShadow()
{
    FrontHouse house;
    const auto shadow = [](QQuickItem* door) {
        const QQuickItem* loader = Stage::first(door, "QQuickLoader");
        return loader->childItems().isEmpty() ? 0 : loader->opacity();
    };
    QTRY_COMPARE(shadow(house.newsDoor()), 1.0);
    QCOMPARE(shadow(house.storeDoor()), 0.0);
    house.stage.press(Qt::Key_Right);
    QTRY_COMPARE(shadow(house.storeDoor()), 1.0);
    QTRY_COMPARE(shadow(house.newsDoor()), 0.0);
}

void LandingViewTest::liftAnimationOfDoorTakes150Milliseconds()
{
    FrontHouse house;
    house.stage.press(Qt::Key_Right);
    QCOMPARE(StationMotion::liftTime(), 150);
    for (QQuickItem* door : {house.newsDoor(), house.storeDoor()}) {
        // One animation for the plate and its shadow.
        QCOMPARE(Stage::animationTimes(door).count(StationMotion::liftTime()), 1);
    }
}

void LandingViewTest::selectedDoorSetsItsFlagWhenItHasNoScreen()
{
    FrontHouse house;
    QCOMPARE(house.view->property("showNews").toBool(), false);
    QCOMPARE(house.view->property("showStore").toBool(), false);
    house.stage.press(Qt::Key_Select);
    QCOMPARE(house.view->property("showNews").toBool(), true);
    QCOMPARE(house.view->property("showStore").toBool(), false);
    house.stage.press(Qt::Key_Right);
    house.stage.press(Qt::Key_Select);
    QCOMPARE(house.view->property("showStore").toBool(), true);
    QCOMPARE(house.isCovered(), false);
}

void LandingViewTest::screenOfDoorCoversFrontScreenUntilBackIsPressed()
{
    FrontHouse house({1920, 1080}, u"newsScreen: %1 shopScreen: %1"_s.arg(coverScreen));
    for (const bool shop : {true, false, true}) {
        QQuickItem* door = shop ? house.storeDoor() : house.newsDoor();
        house.stage.press(shop ? Qt::Key_Right : Qt::Key_Left);
        house.stage.press(Qt::Key_Select);
        QCOMPARE(house.isCovered(), true);
        QVERIFY(!door->hasActiveFocus());
        QCOMPARE(house.stage.picture().pixelColor(20, 20), QColor(u"teal"_s));
        house.stage.press(Qt::Key_Back);
        QCOMPARE(house.isCovered(), false);
        QCOMPARE(house.view->property(shop ? "showStore" : "showNews").toBool(), false);
        QVERIFY(door->hasActiveFocus());
        QVERIFY(!house.shows(u"Press back again to switch the set off"_s));
    }
    QCOMPARE(house.statusRequests(), 1);
}

void LandingViewTest::backDuringSlideInOnlyDismissesCover()
{
    FrontHouse house({1920, 1080}, u"newsScreen: %1"_s.arg(coverScreen));
    const QString notice = u"Press back again to switch the set off"_s;
    house.stage.press(Qt::Key_Select);
    house.stage.press(Qt::Key_Back);
    QVERIFY(!house.isCovered());
    QVERIFY(house.newsDoor()->hasActiveFocus());
    QVERIFY(!house.shows(notice));
    // While the cover still slides out, keys go to the front screen.
    house.stage.press(Qt::Key_Right);
    QVERIFY(house.storeDoor()->hasActiveFocus());
    house.stage.press(Qt::Key_Back);
    QVERIFY(house.shows(notice));
}

void LandingViewTest::coveredFrontScreenIsNotDrawn()
{
    FrontHouse house({1920, 1080}, u"newsScreen: %1"_s.arg(coverScreen));
    house.setNews(true, u"Harbour Council"_s);
    house.stage.press(Qt::Key_Select);
    QTRY_VERIFY(!house.newsDoor()->isVisible());
    house.stage.waitUntilIdle();
    const int frames = house.stage.frames();
    QTest::qWait(500); // the lit lamp would draw its pulse in this time
    QCOMPARE(house.stage.frames(), frames);
    house.stage.press(Qt::Key_Back);
    QVERIFY(house.newsDoor()->isVisible());
    QTRY_VERIFY(house.stage.frames() > frames + 5);
}

void LandingViewTest::playPauseIsNotHandledWhileCovered()
{
    FrontHouse house({1920, 1080}, u"shopScreen: %1"_s.arg(coverScreen));
    house.stage.press(Qt::Key_Right);
    house.stage.press(Qt::Key_Select);
    house.stage.press(Qt::Key_MediaTogglePlayPause);
    QCOMPARE(house.statusRequests(), 1);
}

void LandingViewTest::secondBackWithinThreeSecondsQuits()
{
    FrontHouse house;
    QSignalSpy quitRequested(house.view, SIGNAL(quitRequested()));
    const QString notice = u"Press back again to switch the set off"_s;
    QVERIFY(!house.shows(notice));
    house.stage.press(Qt::Key_Back);
    QVERIFY(house.shows(notice));
    house.clock.advance(3s);
    QVERIFY(!house.shows(notice));
    house.stage.press(Qt::Key_Back);
    QCOMPARE(quitRequested.size(), 0);
    QVERIFY(house.shows(notice));
    house.clock.advance(2999ms);
    house.stage.press(Qt::Key_Back);
    QCOMPARE(quitRequested.size(), 1);
    QVERIFY(!house.shows(notice));
    QCOMPARE(house.clock.pendingTimers(), 0);
}

void LandingViewTest::doorsShowStatusOfHub()
{
    FrontHouse house;
    QVERIFY(house.shows(u"Checking what's on the shelf…"_s));
    QVERIFY(house.shows(u"The tower is dark. Colour bars and a countdown until it isn't."_s));
    house.http.answer(house.http.waitingFor(statusPath), 200,
                      R"({"news": {"tower_live": true, "program_title": "Harbour <b>Council</b>"},
                          "rewindery": {"tapes": 1, "markets": [{"slug": "a", "name": "A", "tapes": 1}]}})");
    QTRY_VERIFY(house.shows(u"1 tapes in stock · 1 market · every one plays right here"_s));
    QVERIFY(house.shows(u"Harbour <b>Council</b>"_s));
    house.setNews(true, {});
    QVERIFY(house.shows(u"The tower is lit — tune in."_s));
    house.setNews(false, {}, u"Tue 5 PM"_s);
    QVERIFY(house.shows(u"Next broadcast · Tue 5 PM"_s));
}

void LandingViewTest::statusLineShowsStateOfStore()
{
    FrontHouse house;
    const auto line = [&](const QString& text) -> QQuickItem* {
        const auto texts = Stage::texts(house.view);
        for (QQuickItem* item : texts) {
            if (item->property("text").toString() == text)
                return item;
        }
        return nullptr;
    };
    QQuickItem* item = line(u"Tuning in…"_s);
    QVERIFY(item);
    QCOMPARE(item->property("font").value<QFont>().pixelSize(), 24);
    house.store.setLastError(u"The hub answered 503."_s);
    QCOMPARE(item->property("text").toString(), u"The hub answered 503."_s);
    QCOMPARE(item->property("color").value<QColor>(), StationPalette::onAirRed());
    house.store.setLastError({});
    house.store.setHasLoadedOnce(true);
    QCOMPARE(item->property("text").toString(), u"Press ▶︎ to refresh"_s);
    QCOMPARE(item->property("font").value<QFont>().pixelSize(), 22);
    QCOMPARE(item->property("color").value<QColor>(), StationPalette::faded(StationPalette::cream(), 0.4));
    QCOMPARE(Stage::area(item).height(), 40.0);
}

void LandingViewTest::newsDoorShowsLiveDuringBroadcast()
{
    FrontHouse house;
    QQuickItem* bars = Stage::first(house.newsDoor(), "MiniColorBars");
    QVERIFY(bars->isVisible());
    QCOMPARE(bars->opacity(), 0.85);
    QVERIFY(!house.shows(u"LIVE"_s));
    QVERIFY(house.shows(u"OFF AIR"_s));
    QVERIFY(house.shows(u"STANDBY"_s));
    house.setNews(true, u"Harbour Council"_s);
    QVERIFY(!bars->isVisible());
    QVERIFY(house.shows(u"LIVE"_s));
    QVERIFY(house.shows(u"ON AIR"_s));
    QVERIFY(!house.shows(u"STANDBY"_s));
    house.setNews(false, {});
    QVERIFY(house.shows(u"OFF AIR"_s));
}

void LandingViewTest::doorHasAccessibleRoleNameAndAction()
{
    FrontHouse house;
    QAccessible::setActive(true);
    QAccessibleInterface* door = QAccessible::queryAccessibleInterface(house.storeDoor());
    QVERIFY(door);
    QCOMPARE(door->role(), QAccessible::Button);
    QCOMPARE(door->text(QAccessible::Name), u"REWINDERY"_s);
    QCOMPARE(door->text(QAccessible::Description), u"Checking what's on the shelf…"_s);
    door->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(house.view->property("showStore").toBool(), true);
}

QUILLMERE_TEST(LandingViewTest, QGuiApplication)
#include "LandingViewTest.moc"
