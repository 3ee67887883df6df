#include "NewsController.h"
#include "HubURL.h"
#include "NewsControllerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

namespace quillmere {

/** Tests the polling passes of the news channel: which requests they send, in which order, and how the answers change
 * the screen. */
class NewsControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_news = std::make_unique<NewsControllerFixture>(); }
    void cleanup() { m_news.reset(); }
    void screenSendsNothingBeforeItAppears();
    void openingScreenStartsChecking();
    void darkTowerShowsStandby();
    void litTowerIsPlayedLive();
    void playerIsKeptWhileTowerStaysLit();
    void playerIsReleasedWhenTowerGoesDark();
    void towerLitAgainGetsNewPlayer();
    void passSendsOneProbeAndOneStatusRequest();
    void nextPassStartsSixSecondsAfterLastAnswer();
    void refreshedStatusIsStored();
    void failedRefreshKeepsOldStatus_data();
    void failedRefreshKeepsOldStatus();
    void passWaitsForHangingHub();
    void invalidPathStaysOnStandby_data();
    void invalidPathStaysOnStandby();
    void newStationPathIsProbedAtOnce();
    void checkingEndsAtFirstAnswer();
    void playerFailureDoesNotChangeScreen();

private:
    NewsController& screen() { return *m_news->screen; }

    std::unique_ptr<NewsControllerFixture> m_news;
};

void NewsControllerTest::screenSendsNothingBeforeItAppears()
{
    QCOMPARE(m_news->http.count(), 0);
    QVERIFY(!screen().isChecking());
    QVERIFY(!screen().isLive());
    QVERIFY(!screen().player());
    QVERIFY(!screen().selected());
    QVERIFY(screen().isOnStandby());
}

void NewsControllerTest::openingScreenStartsChecking()
{
    screen().appear();
    QVERIFY(screen().isChecking());
    QVERIFY(!screen().isLive());
    QVERIFY(screen().isOnStandby());
    QCOMPARE(m_news->http.count(), 1);
    QVERIFY(m_news->isWaitingFor(NewsControllerFixture::five));
}

void NewsControllerTest::darkTowerShowsStandby()
{
    screen().appear();
    m_news->probe(false);
    QVERIFY(!screen().isChecking());
    QVERIFY(!screen().isLive());
    QVERIFY(screen().isOnStandby());
    QVERIFY(m_news->players.isEmpty());
    QVERIFY(m_news->isWaitingFor(NewsControllerFixture::status));
}

void NewsControllerTest::litTowerIsPlayedLive()
{
    screen().appear();
    m_news->probe(true);
    QVERIFY(screen().isLive());
    QVERIFY(!screen().isChecking());
    QVERIFY(screen().isLit());
    QVERIFY(!screen().isOnStandby());
    QCOMPARE(screen().shownStationNumbers(), QStringList{u"5"_s});
    QCOMPARE(screen().player(), m_news->player());
    QCOMPARE(m_news->player()->item()->url(), *hubURL(NewsControllerFixture::five));
    QVERIFY(m_news->player()->item()->isLive());
    QVERIFY(m_news->player()->automaticallyWaitsToMinimizeStalling());
    QCOMPARE(m_news->player()->timeControl(), VideoPlayer::TimeControl::WaitingToPlay);
    QVERIFY(m_news->isWaitingFor(NewsControllerFixture::status));
}

void NewsControllerTest::playerIsKeptWhileTowerStaysLit()
{
    m_news->open(true);
    const QPointer<ScriptedVideoPlayer> player = m_news->player();
    const auto callsBefore = *m_news->calls.last();
    QSignalSpy pictures(&screen(), &NewsController::pictureChanged);
    for (int pass = 0; pass < 5; ++pass) {
        m_news->pause();
        m_news->pass(true);
    }
    QCOMPARE(screen().player(), player.data());
    QCOMPARE(m_news->players.size(), 1);
    QCOMPARE(*m_news->calls.last(), callsBefore);
    QVERIFY(pictures.isEmpty());
}

void NewsControllerTest::playerIsReleasedWhenTowerGoesDark()
{
    m_news->open(true);
    m_news->pause();
    QVERIFY(screen().player());
    m_news->probe(false);
    QVERIFY(!screen().player());
    QVERIFY(!m_news->players.first());
    QVERIFY(!screen().isLive());
    QVERIFY(!screen().isChecking());
    QVERIFY(screen().isOnStandby());
    QCOMPARE(m_news->calls.first()->last(2), QStringList({u"pause"_s, u"clearItem"_s}));
}

void NewsControllerTest::towerLitAgainGetsNewPlayer()
{
    m_news->open(true);
    m_news->pause();
    m_news->pass(false);
    m_news->pause();
    QSignalSpy pictures(&screen(), &NewsController::pictureChanged);
    m_news->probe(true);
    QCOMPARE(m_news->players.size(), 2);
    QCOMPARE(screen().player(), m_news->player());
    QVERIFY(screen().isLit());
    // The state changes once: it is never on standby while the tower is live.
    QCOMPARE(pictures.count(), 1);
}

void NewsControllerTest::passSendsOneProbeAndOneStatusRequest()
{
    screen().appear();
    for (int pass = 1; pass <= 4; ++pass) {
        QCOMPARE(m_news->requests(NewsControllerFixture::five), pass);
        QCOMPARE(m_news->requests(NewsControllerFixture::status), pass - 1);
        m_news->probe(pass % 2 == 0);
        QCOMPARE(m_news->requests(NewsControllerFixture::status), pass);
        m_news->refresh();
        m_news->pause();
    }
    // The requests are equal, but no answer is cached: each one goes to the hub.
    QCOMPARE(m_news->http.request(0).cache, HttpRequest::Cache::Bypass);
}

void NewsControllerTest::nextPassStartsSixSecondsAfterLastAnswer()
{
    screen().appear();
    m_news->clock.advance(5s);
    m_news->probe(false);
    m_news->clock.advance(5s);
    QCOMPARE(m_news->requests(NewsControllerFixture::five), 1);
    m_news->refresh();
    m_news->clock.advance(5999ms);
    QCOMPARE(m_news->requests(NewsControllerFixture::five), 1);
    m_news->clock.advance(1ms);
    QCOMPARE(m_news->requests(NewsControllerFixture::five), 2);
}

void NewsControllerTest::refreshedStatusIsStored()
{
    m_news->open(false, R"({"news": {"program_title": "The Late Report"}})");
    QCOMPARE(m_news->store->status().news.programTitle, u"The Late Report"_s);
}

void NewsControllerTest::failedRefreshKeepsOldStatus_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("code");
    QTest::newRow("an error") << QByteArray() << 503;
    QTest::newRow("not a record") << QByteArray("<html>") << 200;
}

void NewsControllerTest::failedRefreshKeepsOldStatus()
{
    QFETCH(const QByteArray, body);
    QFETCH(const int, code);
    m_news->open(true, R"({"news": {"program_title": "The Late Report"}})");
    m_news->pause();
    m_news->probe(true);
    QSignalSpy changes(m_news->store.get(), &Store::objectWillChange);
    m_news->refresh(body, code);
    QCOMPARE(m_news->store->status().news.programTitle, u"The Late Report"_s);
    QVERIFY(changes.isEmpty());
    QVERIFY(screen().isLit());
    m_news->pause();
    QVERIFY(m_news->isWaitingFor(NewsControllerFixture::five));
}

void NewsControllerTest::passWaitsForHangingHub()
{
    screen().appear();
    m_news->clock.advance(1h);
    QVERIFY(screen().isChecking());
    QCOMPARE(m_news->http.count(), 1);
    m_news->http.fail(0, u"too late"_s, HttpFailure::Kind::TimedOut);
    QVERIFY(!screen().isChecking());
    QVERIFY(!screen().isLive());
    m_news->clock.advance(1h);
    QCOMPARE(m_news->http.count(), 2);
    m_news->http.fail(1, u"too late"_s, HttpFailure::Kind::TimedOut);
    m_news->pause();
    m_news->probe(true);
    QVERIFY(screen().isLit());
}

void NewsControllerTest::invalidPathStaysOnStandby_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("broken") << QByteArray("https://[broken");
    QTest::newRow("another scheme") << QByteArray("file:///etc/passwd");
}

void NewsControllerTest::invalidPathStaysOnStandby()
{
    QFETCH(const QByteArray, path);
    m_news->open(true, R"({"news": {"hls_url": ")" + path + R"("}})");
    for (int pass = 0; pass < 3; ++pass) {
        QVERIFY(screen().isOnStandby());
        QVERIFY(!screen().player());
        QVERIFY(!screen().isLive());
        QVERIFY(!screen().isChecking());
        m_news->refresh(R"({"news": {"hls_url": ")" + path + R"("}})");
        m_news->pause();
    }
    QCOMPARE(m_news->requests(NewsControllerFixture::five), 1);
    QCOMPARE(m_news->players.size(), 1);
}

void NewsControllerTest::newStationPathIsProbedAtOnce()
{
    m_news->open(false, R"({"news": {"hls_url": "/live/other.m3u8"}})");
    QVERIFY(m_news->isWaitingFor(u"/live/other.m3u8"_s));
    QVERIFY(screen().isChecking());
    m_news->pause();
    // The replaced polling sends no more requests.
    QCOMPARE(m_news->requests(NewsControllerFixture::five), 1);
    QCOMPARE(m_news->requests(u"/live/other.m3u8"_s), 1);
}

void NewsControllerTest::checkingEndsAtFirstAnswer()
{
    QSignalSpy changes(&screen(), &NewsController::checkingChanged);
    m_news->open(false);
    m_news->pause();
    m_news->pass(true);
    m_news->pause();
    m_news->pass(false);
    QCOMPARE(changes.count(), 2);
}

void NewsControllerTest::playerFailureDoesNotChangeScreen()
{
    m_news->open(true);
    m_news->player()->fail({});
    QVERIFY(screen().isLit());
    m_news->pause();
    m_news->pass(true);
    QCOMPARE(m_news->players.size(), 1);
    QVERIFY(screen().isLit());
}

QUILLMERE_TEST(NewsControllerTest, QCoreApplication)

} // namespace quillmere

#include "NewsControllerTest.moc"
