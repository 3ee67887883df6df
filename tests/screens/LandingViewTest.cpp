#include "FrontFixture.h"
#include "StationMotion.h"
#include "StationPalette.h"
#include "TestMain.h"

#include <QAccessible>
#include <QSignalSpy>

using namespace std::chrono_literals;

namespace quillmere {

namespace {

const QString notice = u"Press back again to switch the set off"_s;
const QString coverScreen = u"Component { FocusScreen { "
                            "Rectangle { anchors.fill: parent; color: 'teal' } } }"_s;

} // namespace

class LandingViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void statusIsRequestedWhenScreenAppearsAndByPlayKeys()
    {
        FrontFixture fixture;
        QCOMPARE(fixture.statusRequests(), 1);
        QVERIFY(fixture.showsText(u"Tuning in…"_s));
        fixture.press(Qt::Key_MediaTogglePlayPause);
        QCOMPARE(fixture.statusRequests(), 2);
        fixture.press(Qt::Key_MediaPlay);
        QCOMPARE(fixture.statusRequests(), 3);
    }

    void leftAndRightMoveFocusBetweenDoors()
    {
        FrontFixture fixture;
        QVERIFY(fixture.newsDoor()->hasActiveFocus());
        QVERIFY(!fixture.storeDoor()->hasActiveFocus());
        fixture.press(Qt::Key_Left);
        QVERIFY(fixture.newsDoor()->hasActiveFocus());
        fixture.press(Qt::Key_Right);
        QVERIFY(fixture.storeDoor()->hasActiveFocus());
        fixture.press({Qt::Key_Right, Qt::Key_Up, Qt::Key_Down});
        QVERIFY(fixture.storeDoor()->hasActiveFocus());
        fixture.press(Qt::Key_Left);
        QVERIFY(fixture.newsDoor()->hasActiveFocus());
    }

    void onlyFocusedDoorIsLargeAndHasShadow()
    {
        FrontFixture fixture;
        fixture.waitUntilIdle();
        const auto width = [](QQuickItem* door) {
            return TestScreen::area(TestScreen::first(door, "CardPlate")).width();
        };
        const auto shadow = [](QQuickItem* door) {
            const QQuickItem* loader = TestScreen::first(door, "QQuickLoader");
            return loader->childItems().isEmpty() ? 0 : loader->opacity();
        };
        QCOMPARE(width(fixture.newsDoor()), 620 * 1.06);
        QCOMPARE(width(fixture.storeDoor()), 620.0);
        QTRY_COMPARE(shadow(fixture.newsDoor()), 1.0);
        QCOMPARE(shadow(fixture.storeDoor()), 0.0);
        fixture.press(Qt::Key_Right);
        QTRY_COMPARE(width(fixture.storeDoor()), 620 * 1.06);
        QTRY_COMPARE(width(fixture.newsDoor()), 620.0);
        QTRY_COMPARE(shadow(fixture.storeDoor()), 1.0);
        QTRY_COMPARE(shadow(fixture.newsDoor()), 0.0);
        QCOMPARE(StationMotion::liftTime(), 150);
        // One animation for the plate and its shadow.
        for (QQuickItem* door : {fixture.newsDoor(), fixture.storeDoor()})
            QCOMPARE(TestScreen::animationTimes(door).count(StationMotion::liftTime()), 1);
    }

    void selectedDoorSetsItsFlagWhenItHasNoScreen()
    {
        FrontFixture fixture;
        QCOMPARE(fixture.view->property("showNews").toBool(), false);
        QCOMPARE(fixture.view->property("showStore").toBool(), false);
        fixture.press(Qt::Key_Select);
        QCOMPARE(fixture.view->property("showNews").toBool(), true);
        QCOMPARE(fixture.view->property("showStore").toBool(), false);
        fixture.press({Qt::Key_Right, Qt::Key_Select});
        QCOMPARE(fixture.view->property("showStore").toBool(), true);
        QCOMPARE(fixture.isCovered(), false);
    }

    void screenOfDoorCoversFrontScreenUntilBackIsPressed()
    {
        FrontFixture fixture({1920, 1080}, u"newsScreen: %1 shopScreen: %1"_s.arg(coverScreen));
        for (const bool shop : {true, false, true}) {
            QQuickItem* door = shop ? fixture.storeDoor() : fixture.newsDoor();
            fixture.press({shop ? Qt::Key_Right : Qt::Key_Left, Qt::Key_Select});
            QCOMPARE(fixture.isCovered(), true);
            fixture.press(Qt::Key_MediaTogglePlayPause);
            QVERIFY(!door->hasActiveFocus());
            QCOMPARE(fixture.picture().pixelColor(20, 20), QColor(u"teal"_s));
            fixture.press(Qt::Key_Back);
            QCOMPARE(fixture.isCovered(), false);
            QCOMPARE(fixture.view->property(shop ? "showStore" : "showNews").toBool(), false);
            QVERIFY(door->hasActiveFocus());
            QVERIFY(!fixture.showsText(notice));
        }
        QCOMPARE(fixture.statusRequests(), 1); // the play key has no effect while the screen is covered
    }

    void backDuringSlideInOnlyDismissesCover()
    {
        FrontFixture fixture({1920, 1080}, u"newsScreen: %1"_s.arg(coverScreen));
        fixture.press({Qt::Key_Select, Qt::Key_Back});
        QVERIFY(!fixture.isCovered());
        QVERIFY(fixture.newsDoor()->hasActiveFocus());
        QVERIFY(!fixture.showsText(notice));
        // While the cover still slides out, keys go to the front screen.
        fixture.press(Qt::Key_Right);
        QVERIFY(fixture.storeDoor()->hasActiveFocus());
        fixture.press(Qt::Key_Back);
        QVERIFY(fixture.showsText(notice));
    }

    void coveredFrontScreenIsNotDrawn()
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

    void secondBackWithinThreeSecondsQuits()
    {
        FrontFixture fixture;
        QSignalSpy quitRequested(fixture.view, SIGNAL(quitRequested()));
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

    void doorsShowStatusOfHub()
    {
        FrontFixture fixture;
        QVERIFY(fixture.showsText(u"Checking what's on the shelf…"_s));
        QVERIFY(fixture.showsText(u"The tower is dark. Colour bars and a countdown until it isn't."_s));
        fixture.http.answer(fixture.http.waitingFor(u"/api/tv/status"_s), 200,
                            R"({"news": {"tower_live": true, "program_title": "Harbour <b>Council</b>"},
                              "rewindery": {"tapes": 1, "markets": [{"slug": "a", "name": "A", "tapes": 1}]}})");
        QTRY_VERIFY(fixture.showsText(u"1 tapes in stock · 1 market · every one plays right here"_s));
        QVERIFY(fixture.showsText(u"Harbour <b>Council</b>"_s));
        fixture.setNews(true, {});
        QVERIFY(fixture.showsText(u"The tower is lit — tune in."_s));
        fixture.setNews(false, {}, u"Tue 5 PM"_s);
        QVERIFY(fixture.showsText(u"Next broadcast · Tue 5 PM"_s));
    }

    void statusLineShowsStateOfStore()
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

    void newsDoorShowsLiveDuringBroadcast()
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

    void doorHasAccessibleRoleNameAndAction()
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
};

QUILLMERE_TEST(LandingViewTest, QGuiApplication)

} // namespace quillmere

#include "LandingViewTest.moc"
