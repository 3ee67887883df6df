#include "HubAPI.h"
#include "MemoryDefaults.h"
#include "ScriptedClock.h"
#include "ScriptedHttpClient.h"
#include "Stage.h"
#include "StationPalette.h"
#include "Store.h"
#include "Timepiece.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString statusPath = u"/api/tv/status"_s;

/** The front screen on a scripted network and clock. */
struct House
{
    ScriptedHttpClient http;
    HubAPI hub{http, QUrl(u"https://hub.example.org"_s)};
    MemoryDefaults defaults;
    Store store{hub, defaults};
    ScriptedClock clock;
    Timepiece timepiece{clock};
    Stage stage;
    QQuickItem* view = nullptr;

    explicit House(QSize size = {1920, 1080}, const QString& doors = {}) : stage(size)
    {
        QQuickItem* root = stage.put(
            u"Canvas { property QtObject store; property QtObject timepiece; LandingView { anchors.fill: parent; "
            "focus: true; store: parent.store; timepiece: parent.timepiece; %1 } }"_s.arg(doors),
            {{u"store"_s, QVariant::fromValue<QObject*>(&store)},
             {u"timepiece"_s, QVariant::fromValue<QObject*>(&timepiece)}});
        view = root ? Stage::first(root, "LandingView") : nullptr;
    }

    QQuickItem* newsDoor() { return Stage::first(view, "NewsDoor"); }
    QQuickItem* storeDoor() { return Stage::first(view, "StoreDoor"); }

    bool shows(const QString& text)
    {
        const auto texts = Stage::texts(view);
        return std::any_of(texts.begin(), texts.end(),
                           [&](const QQuickItem* item) { return item->property("text").toString() == text; });
    }

    void setNews(bool live, const QString& title, const QString& next = {})
    {
        TVStatus status = store.status();
        status.news.towerLive = live;
        status.news.programTitle = title;
        status.news.nextBroadcastLabel = next;
        store.setStatus(status);
    }

    int statusRequests()
    {
        int count = 0;
        for (int call = 0; call < http.count(); ++call)
            count += http.request(call).url.path() == statusPath;
        return count;
    }
};

const QString cover = u"Component { FocusScope { objectName: 'cover'; focus: true; "
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
    void selectingADoorOnlySetsItsFlagWhileItsScreenIsMissing();
    void aDoorsScreenCoversThisOneUntilBackIsPressed();
    void playPauseBelongsToTheCoverWhileThereIsOne();
    void backLeavesOnlyWhenPressedAgainWithinThreeSeconds();
    void theDoorsSayWhatTheHubSaid();
    void theStatusLineFollowsTheStore();
    void aLiveTowerShowsLive();
    void theDoorsAreAsPublished_data();
    void theDoorsAreAsPublished();
    void everythingStaysInItsPlace_data();
    void everythingStaysInItsPlace();
    void aDarkFrontScreenDrawsNoFrame();
    void aLitLampRepaintsOnlyItself();
    void theDoorsCanBeHeard();
};

void LandingViewTest::loadingStartsWhenTheScreenAppears()
{
    House house;
    QCOMPARE(house.statusRequests(), 1);
    QVERIFY(house.shows(u"Tuning in…"_s));
}

void LandingViewTest::playPauseLoadsAgain()
{
    House house;
    house.stage.press(Qt::Key_MediaTogglePlayPause);
    QCOMPARE(house.statusRequests(), 2);
    house.stage.press(Qt::Key_MediaPlay);
    QCOMPARE(house.statusRequests(), 3);
}

void LandingViewTest::focusStartsOnADoor()
{
    House house;
    QVERIFY(house.newsDoor()->hasActiveFocus());
    QVERIFY(!house.storeDoor()->hasActiveFocus());
}

void LandingViewTest::leftAndRightMoveBetweenTheDoors()
{
    House house;
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
    House house;
    house.stage.settle();
    const auto width = [](QQuickItem* door) { return Stage::area(Stage::first(door, "CardPlate")).width(); };
    QCOMPARE(width(house.newsDoor()), 620 * 1.06);
    QCOMPARE(width(house.storeDoor()), 620.0);
    house.stage.press(Qt::Key_Right);
    QTRY_COMPARE(width(house.storeDoor()), 620 * 1.06);
    QTRY_COMPARE(width(house.newsDoor()), 620.0);
}

void LandingViewTest::selectingADoorOnlySetsItsFlagWhileItsScreenIsMissing()
{
    House house;
    QCOMPARE(house.view->property("showNews").toBool(), false);
    QCOMPARE(house.view->property("showStore").toBool(), false);
    house.stage.press(Qt::Key_Select);
    QCOMPARE(house.view->property("showNews").toBool(), true);
    QCOMPARE(house.view->property("showStore").toBool(), false);
    house.stage.press(Qt::Key_Right);
    house.stage.press(Qt::Key_Select);
    QCOMPARE(house.view->property("showStore").toBool(), true);
    QCOMPARE(house.view->property("covered").toBool(), false);
}

void LandingViewTest::aDoorsScreenCoversThisOneUntilBackIsPressed()
{
    House house({1920, 1080}, u"newsScreen: %1 shopScreen: %1"_s.arg(cover));
    for (const bool shop : {true, false, true}) {
        QQuickItem* door = shop ? house.storeDoor() : house.newsDoor();
        house.stage.press(shop ? Qt::Key_Right : Qt::Key_Left);
        house.stage.press(Qt::Key_Select);
        QCOMPARE(house.view->property("covered").toBool(), true);
        QVERIFY(!door->hasActiveFocus());
        QCOMPARE(house.stage.picture().pixelColor(20, 20), QColor(u"teal"_s));
        house.stage.press(Qt::Key_Back);
        QCOMPARE(house.view->property("covered").toBool(), false);
        QCOMPARE(house.view->property(shop ? "showStore" : "showNews").toBool(), false);
        QVERIFY(door->hasActiveFocus());
        QVERIFY(!house.shows(u"Press back again to switch the set off"_s));
    }
    QCOMPARE(house.statusRequests(), 1);
}

void LandingViewTest::playPauseBelongsToTheCoverWhileThereIsOne()
{
    House house({1920, 1080}, u"shopScreen: %1"_s.arg(cover));
    house.stage.press(Qt::Key_Right);
    house.stage.press(Qt::Key_Select);
    house.stage.press(Qt::Key_MediaTogglePlayPause);
    QCOMPARE(house.statusRequests(), 1);
}

void LandingViewTest::backLeavesOnlyWhenPressedAgainWithinThreeSeconds()
{
    House house;
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
    House house;
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
    House house;
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
    House house;
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

void LandingViewTest::theDoorsAreAsPublished_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("720p") << QSize(1280, 720);
    QTest::newRow("1080p") << QSize(1920, 1080);
    QTest::newRow("2160p") << QSize(3840, 2160);
}

void LandingViewTest::theDoorsAreAsPublished()
{
    QFETCH(QSize, size);
    House house(size);
    const double factor = size.width() / 1920.0;
    const QRectF news = Stage::area(house.newsDoor());
    const QRectF store = Stage::area(house.storeDoor());
    QCOMPARE(news.size() / factor, QSizeF(620, 620));
    QCOMPARE(store.size() / factor, QSizeF(620, 620));
    QCOMPARE((store.left() - news.right()) / factor, 64.0);
    QCOMPARE(news.top(), store.top());
    QVERIFY(std::abs((news.left() + store.right()) / 2 - size.width() / 2.0) < 1);

    // The shop door stands unlifted: its outline and its filling, at its edges.
    const QImage picture = house.stage.picture();
    const auto at = [&](double x, double y) {
        return picture.pixelColor(int(store.left() + x * factor), int(store.top() + y * factor));
    };
    QVERIFY(at(310, 1.6).red() > 80);
    QVERIFY(at(1.6, 310).red() > 80);
    QVERIFY(at(310, 6).red() < 25);
    QVERIFY(at(6, 310).red() < 25);
    QVERIFY(at(1, 1).red() < 25);
}

void LandingViewTest::everythingStaysInItsPlace_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("title");
    const QList<QPair<const char*, QString>> titles{
        {"no title", {}},
        {"plain", u"Harbour Council: regular session"_s},
        {"300 characters",
         u"Joint special session of the harbour board and the water commission "_s.repeated(5).left(300)},
        {"one word of 300", QString(300, u'W')},
        {"Chinese", u"市議會定期會議與港口委員會聯席特別會議"_s.repeated(15).left(300)},
        {"Arabic", u"اجتماع مجلس المدينة "_s.repeated(15)},
        {"lines of their own", u"one\ntwo\nthree\nfour\nfive\nsix\nseven\neight"_s},
        {"emoji", u"\U0001F6A2\U0001F4FC "_s.repeated(60)},
    };
    for (const QSize size : {QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)}) {
        for (const auto& [name, title] : titles)
            QTest::addRow("%s at %d", name, size.width()) << size << title;
    }
}

void LandingViewTest::everythingStaysInItsPlace()
{
    QFETCH(QSize, size);
    QFETCH(QString, title);
    House house(size);
    house.store.setLastError(u"The hub answered "_s + title);
    for (const bool live : {true, false}) {
        house.setNews(live, title, title);
        QTest::qWait(50);
        const double factor = size.width() / 1920.0;
        for (QQuickItem* door : {house.newsDoor(), house.storeDoor()}) {
            const QRectF frame =
                Stage::area(Stage::first(door, "CardPlate")).marginsRemoved(QMarginsF(24, 24, 24, 24) * factor);
            QRectF above;
            for (QQuickItem* text : Stage::texts(door)) {
                const QRectF area = Stage::area(text);
                QVERIFY2(frame.contains(area), qPrintable(text->property("text").toString()));
                QVERIFY(text->property("contentHeight").toDouble() <= text->height() + 0.5);
                QVERIFY(text->property("contentWidth").toDouble() <= text->width() + 0.5);
                QVERIFY(!above.intersects(area));
                above = area;
            }
        }
        const QRectF glass({0, 0}, QSizeF(size));
        for (QQuickItem* text : Stage::texts(house.view)) {
            QVERIFY(glass.contains(Stage::area(text)));
            const double width = text->property("contentWidth").toDouble();
            // Qt cuts joined Arabic letters up to one of them too late.
            QVERIFY2(width <= text->width() + 24, qPrintable(u"%1 of %2"_s.arg(width).arg(text->width())));
        }
    }
}

void LandingViewTest::aDarkFrontScreenDrawsNoFrame()
{
    House house;
    house.stage.settle();
    const int framesAtRest = house.stage.frames();
    QTest::qWait(3000);
    QCOMPARE(house.stage.frames(), framesAtRest);
}

void LandingViewTest::aLitLampRepaintsOnlyItself()
{
    House house;
    house.setNews(true, u"Harbour Council"_s);
    QQuickItem* lamp = Stage::first(house.newsDoor(), "OnAirLamp");
    QTRY_VERIFY(lamp->property("glow").toDouble() > 0.9);
    QTest::qWait(400);
    const QImage before = house.stage.window().grabWindow();
    const int framesBefore = house.stage.frames();
    QTest::qWait(500);
    const QImage after = house.stage.window().grabWindow();
    QVERIFY(house.stage.frames() > framesBefore + 5);
    QRect changed;
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            if (before.pixel(x, y) != after.pixel(x, y))
                changed |= QRect(x, y, 1, 1);
        }
    }
    QVERIFY(!changed.isEmpty());
    const QRectF disc = Stage::area(Stage::first(lamp, "LampDisc"));
    QVERIFY(disc.marginsAdded({40, 40, 40, 40}).toAlignedRect().contains(changed));
}

void LandingViewTest::theDoorsCanBeHeard()
{
    House house;
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
