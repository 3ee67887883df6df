#include "NewsController.h"
#include "HubURL.h"
#include "NewsControllerFixture.h"
#include "Rows.h"
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

    void openingScreenProbesTower()
    {
        QCOMPARE(m_news->http.count(), 0);
        QCOMPARE(m_news->state(), u"standby"_s);
        QVERIFY(!screen().selected());
        screen().appear();
        QCOMPARE(m_news->state(), u"checking standby"_s);
        QCOMPARE(m_news->http.count(), 1);
        QVERIFY(m_news->isWaitingFor(m_news->five));
        m_news->probe(false);
        QCOMPARE(m_news->state(), u"standby"_s);
        QVERIFY(m_news->players.isEmpty());
        QVERIFY(m_news->isWaitingFor(m_news->status));
    }

    void litTowerIsPlayedLive()
    {
        screen().appear();
        m_news->probe(true);
        QCOMPARE(m_news->state(), u"live player lit"_s);
        QCOMPARE(screen().shownStationNumbers(), QStringList{u"5"_s});
        QCOMPARE(screen().player(), m_news->player());
        QCOMPARE(m_news->player()->item()->url(), *hubURL(m_news->five));
        QVERIFY(m_news->player()->item()->isLive());
        QVERIFY(m_news->player()->automaticallyWaitsToMinimizeStalling());
        QCOMPARE(m_news->player()->timeControl(), VideoPlayer::TimeControl::WaitingToPlay);
        QVERIFY(m_news->isWaitingFor(m_news->status));
    }

    void playerIsKeptWhileTowerStaysLit()
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

    void playerIsReleasedWhenTowerGoesDarkAndReplacedWhenLit()
    {
        m_news->open(true);
        m_news->pause();
        QVERIFY(screen().player());
        m_news->probe(false);
        QCOMPARE(m_news->state(), u"standby"_s);
        QVERIFY(!m_news->players.first());
        QCOMPARE(m_news->calls.first()->last(2), QStringList({u"pause"_s, u"clearItem"_s}));
        m_news->refresh();
        m_news->pause();
        QSignalSpy pictures(&screen(), &NewsController::pictureChanged);
        m_news->probe(true);
        QCOMPARE(m_news->players.size(), 2);
        QCOMPARE(screen().player(), m_news->player());
        QVERIFY(screen().isLit());
        // The state changes once: it is never on standby while the tower is live.
        QCOMPARE(pictures.count(), 1);
    }

    void passSendsOneProbeAndOneStatusRequest()
    {
        screen().appear();
        for (int pass = 1; pass <= 4; ++pass) {
            QCOMPARE(m_news->requests(m_news->five), pass);
            QCOMPARE(m_news->requests(m_news->status), pass - 1);
            m_news->probe(pass % 2 == 0);
            QCOMPARE(m_news->requests(m_news->status), pass);
            m_news->refresh();
            m_news->pause();
        }
        // The requests are equal, but no answer is cached: each one goes to the hub.
        QCOMPARE(m_news->http.request(0).cache, HttpRequest::Cache::Bypass);
    }

    void nextPassStartsSixSecondsAfterLastAnswer()
    {
        screen().appear();
        m_news->clock.advance(5s);
        m_news->probe(false);
        m_news->clock.advance(5s);
        QCOMPARE(m_news->requests(m_news->five), 1);
        m_news->refresh();
        m_news->clock.advance(5999ms);
        QCOMPARE(m_news->requests(m_news->five), 1);
        m_news->clock.advance(1ms);
        QCOMPARE(m_news->requests(m_news->five), 2);
    }

    void failedRefreshKeepsOldStatus_data()
    {
        rows<QByteArray, int>({"body", "code"}, {{"an error", QByteArray(), 503}, {"not a record", "<html>", 200}});
    }

    void failedRefreshKeepsOldStatus()
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
        QVERIFY(m_news->isWaitingFor(m_news->five));
    }

    void passWaitsForHangingHub()
    {
        screen().appear();
        m_news->clock.advance(1h);
        QVERIFY(screen().isChecking());
        QCOMPARE(m_news->http.count(), 1);
        m_news->http.fail(0, u"too late"_s, HttpFailure::Kind::TimedOut);
        QCOMPARE(m_news->state(), u"standby"_s);
        m_news->clock.advance(1h);
        QCOMPARE(m_news->http.count(), 2);
        m_news->http.fail(1, u"too late"_s, HttpFailure::Kind::TimedOut);
        m_news->pause();
        m_news->probe(true);
        QVERIFY(screen().isLit());
    }

    void invalidPathStaysOnStandby_data()
    {
        rows<QByteArray>({"path"}, {{"broken", "https://[broken"}, {"another scheme", "file:///etc/passwd"}});
    }

    void invalidPathStaysOnStandby()
    {
        QFETCH(const QByteArray, path);
        m_news->open(true, R"({"news": {"hls_url": ")" + path + R"("}})");
        for (int pass = 0; pass < 3; ++pass) {
            QCOMPARE(m_news->state(), u"standby"_s);
            m_news->refresh(R"({"news": {"hls_url": ")" + path + R"("}})");
            m_news->pause();
        }
        QCOMPARE(m_news->requests(m_news->five), 1);
        QCOMPARE(m_news->players.size(), 1);
    }

    void newStationPathIsProbedAtOnce()
    {
        m_news->open(false, R"({"news": {"hls_url": "/live/other.m3u8"}})");
        QVERIFY(m_news->isWaitingFor(u"/live/other.m3u8"_s));
        QVERIFY(screen().isChecking());
        m_news->pause();
        // The replaced polling sends no more requests.
        QCOMPARE(m_news->requests(m_news->five), 1);
        QCOMPARE(m_news->requests(u"/live/other.m3u8"_s), 1);
    }

    void checkingEndsAtFirstAnswer()
    {
        QSignalSpy changes(&screen(), &NewsController::checkingChanged);
        m_news->open(false);
        m_news->pause();
        m_news->pass(true);
        m_news->pause();
        m_news->pass(false);
        QCOMPARE(changes.count(), 2);
    }

    void playerFailureDoesNotChangeScreen()
    {
        m_news->open(true);
        m_news->player()->fail({});
        QVERIFY(screen().isLit());
        m_news->pause();
        m_news->pass(true);
        QCOMPARE(m_news->players.size(), 1);
        QVERIFY(screen().isLit());
    }

private:
    NewsController& screen() { return *m_news->screen; }

    std::unique_ptr<NewsControllerFixture> m_news;
};

QUILLMERE_TEST(NewsControllerTest, QCoreApplication)

} // namespace quillmere

#include "NewsControllerTest.moc"
