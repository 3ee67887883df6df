#include "FrontHouse.h"
#include "StationMotion.h"
#include "StationPalette.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString statusPath = u"/api/tv/status"_s;

const QString cover = u"Component { FocusScreen { "
                      "Rectangle { anchors.fill: parent; color: 'teal' } } }"_s;

} // namespace

class LandingViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadingStartsWhenTheScreenAppears();
    void playPauseLoadsAgain();
    void focusStartsOnADoor();
    void leftAndRightMoveBetweenTheDoors();
    void theFocusedDoorLifts();
    void theFocusedDoorCastsAShadow();
    void aDoorLiftsInFifteenHundredthsOfASecond();
    void selectingADoorOnlySetsItsFlagWhileItsScreenIsMissing();
    void aDoorsScreenCoversThisOneUntilBackIsPressed();
    void backDuringTheSlideOnlyTakesTheCoverAway();
    void whatIsCoveredIsNotDrawn();
    void playPauseBelongsToTheCoverWhileThereIsOne();
    void backLeavesOnlyWhenPressedAgainWithinThreeSeconds();
    void theDoorsSayWhatTheHubSaid();
    void theStatusLineFollowsTheStore();
    void aLiveTowerShowsLive();
    void theDoorsCanBeHeard();
};

void LandingViewTest::loadingStartsWhenTheScreenAppears()
{
    FrontHouse house;
    QCOMPARE(house.statusRequests(), 1);
    QVERIFY(house.shows(u"Tuning in…"_s));
}

void LandingViewTest::playPauseLoadsAgain()
{
    FrontHouse house;
    house.stage.press(Qt::Key_MediaTogglePlayPause);
    QCOMPARE(house.statusRequests(), 2);
    house.stage.press(Qt::Key_MediaPlay);
    QCOMPARE(house.statusRequests(), 3);
}

void LandingViewTest::focusStartsOnADoor()
{
    FrontHouse house;
    QVERIFY(house.newsDoor()->hasActiveFocus());
    QVERIFY(!house.storeDoor()->hasActiveFocus());
}

void LandingViewTest::leftAndRightMoveBetweenTheDoors()
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

void LandingViewTest::theFocusedDoorLifts()
{
    FrontHouse house;
    house.stage.settle();
    const auto width = [](QQuickItem* door) { return Stage::area(Stage::first(door, "CardPlate")).width(); };
    QCOMPARE(width(house.newsDoor()), 620 * 1.06);
    QCOMPARE(width(house.storeDoor()), 620.0);
    house.stage.press(Qt::Key_Right);
    QTRY_COMPARE(width(house.storeDoor()), 620 * 1.06);
    QTRY_COMPARE(width(house.newsDoor()), 620.0);
}

void LandingViewTest::theFocusedDoorCastsAShadow()
{
    FrontHouse house;
    const auto shadow = [](QQuickItem* door) {
        const QQuickItem* place = Stage::first(door, "QQuickLoader");
        return place->childItems().isEmpty() ? 0 : place->opacity();
    };
    QTRY_COMPARE(shadow(house.newsDoor()), 1.0);
    QCOMPARE(shadow(house.storeDoor()), 0.0);
    house.stage.press(Qt::Key_Right);
    QTRY_COMPARE(shadow(house.storeDoor()), 1.0);
    QTRY_COMPARE(shadow(house.newsDoor()), 0.0);
}

void LandingViewTest::aDoorLiftsInFifteenHundredthsOfASecond()
{
    FrontHouse house;
    house.stage.press(Qt::Key_Right);
    QCOMPARE(StationMotion::liftTime(), 150);
    for (QQuickItem* door : {house.newsDoor(), house.storeDoor()}) {
        // One for the plate and its shadow.
        QCOMPARE(Stage::animationTimes(door).count(StationMotion::liftTime()), 1);
    }
}

void LandingViewTest::selectingADoorOnlySetsItsFlagWhileItsScreenIsMissing()
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

void LandingViewTest::aDoorsScreenCoversThisOneUntilBackIsPressed()
{
    FrontHouse house({1920, 1080}, u"newsScreen: %1 shopScreen: %1"_s.arg(cover));
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

void LandingViewTest::backDuringTheSlideOnlyTakesTheCoverAway()
{
    FrontHouse house({1920, 1080}, u"newsScreen: %1"_s.arg(cover));
    const QString notice = u"Press back again to switch the set off"_s;
    house.stage.press(Qt::Key_Select);
    house.stage.press(Qt::Key_Back);
    QVERIFY(!house.isCovered());
    QVERIFY(house.newsDoor()->hasActiveFocus());
    QVERIFY(!house.shows(notice));
    // While the cover still slides away, the keys are the front screen's again.
    house.stage.press(Qt::Key_Right);
    QVERIFY(house.storeDoor()->hasActiveFocus());
    house.stage.press(Qt::Key_Back);
    QVERIFY(house.shows(notice));
}

void LandingViewTest::whatIsCoveredIsNotDrawn()
{
    FrontHouse house({1920, 1080}, u"newsScreen: %1"_s.arg(cover));
    house.setNews(true, u"Harbour Council"_s);
    house.stage.press(Qt::Key_Select);
    QTRY_VERIFY(!house.newsDoor()->isVisible());
    house.stage.settle();
    const int frames = house.stage.frames();
    QTest::qWait(500); // of the lit lamp's pulse
    QCOMPARE(house.stage.frames(), frames);
    house.stage.press(Qt::Key_Back);
    QVERIFY(house.newsDoor()->isVisible());
    QTRY_VERIFY(house.stage.frames() > frames + 5);
}

void LandingViewTest::playPauseBelongsToTheCoverWhileThereIsOne()
{
    FrontHouse house({1920, 1080}, u"shopScreen: %1"_s.arg(cover));
    house.stage.press(Qt::Key_Right);
    house.stage.press(Qt::Key_Select);
    house.stage.press(Qt::Key_MediaTogglePlayPause);
    QCOMPARE(house.statusRequests(), 1);
}

void LandingViewTest::backLeavesOnlyWhenPressedAgainWithinThreeSeconds()
{
    FrontHouse house;
    QSignalSpy leave(house.view, SIGNAL(leave()));
    const QString notice = u"Press back again to switch the set off"_s;
    QVERIFY(!house.shows(notice));
    house.stage.press(Qt::Key_Back);
    QVERIFY(house.shows(notice));
    house.clock.advance(3s);
    QVERIFY(!house.shows(notice));
    house.stage.press(Qt::Key_Back);
    QCOMPARE(leave.size(), 0);
    QVERIFY(house.shows(notice));
    house.clock.advance(2999ms);
    house.stage.press(Qt::Key_Back);
    QCOMPARE(leave.size(), 1);
    QVERIFY(!house.shows(notice));
    QCOMPARE(house.clock.pendingTimers(), 0);
}

void LandingViewTest::theDoorsSayWhatTheHubSaid()
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

void LandingViewTest::theStatusLineFollowsTheStore()
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

void LandingViewTest::aLiveTowerShowsLive()
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

void LandingViewTest::theDoorsCanBeHeard()
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

QTEST_MAIN(LandingViewTest)
#include "LandingViewTest.moc"
