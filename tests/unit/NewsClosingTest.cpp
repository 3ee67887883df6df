#include "NewsController.h"
#include "NewsControllerFixture.h"
#include "Rows.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

namespace quillmere {

/** Tests the news channel's screen when it is closed or destroyed: what stops, and which late answers are ignored. */
class NewsClosingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_news = std::make_unique<NewsControllerFixture>(); }
    void cleanup() { m_news.reset(); }

    void closingWhileLitStopsSoundAndShowsNoStandbyCard()
    {
        m_news->open(true);
        bool wasOnStandby = false;
        connect(&screen(), &NewsController::pictureChanged, this,
                [&] { wasOnStandby = wasOnStandby || screen().isOnStandby(); });
        screen().disappear();
        QVERIFY(!screen().player());
        QVERIFY(!m_news->players.first());
        QCOMPARE(m_news->calls.first()->last(2), QStringList({u"pause"_s, u"clearItem"_s}));
        QVERIFY(!screen().isLit());
        QVERIFY(!screen().isOnStandby());
        QVERIFY(!wasOnStandby);
        screen().disappear();
        QVERIFY(!screen().isOnStandby());
    }

    void closingWhileDarkKeepsStandbyCard()
    {
        m_news->open(false);
        screen().disappear();
        QVERIFY(screen().isOnStandby());
    }

    void reopenedScreenStartsAgain()
    {
        m_news->open(true);
        screen().disappear();
        QSignalSpy pictures(&screen(), &NewsController::pictureChanged);
        screen().appear();
        QVERIFY(screen().isOnStandby());
        QVERIFY(screen().isChecking());
        QCOMPARE(pictures.count(), 1);
        m_news->pass(true);
        QVERIFY(screen().isLit());
        QCOMPARE(m_news->players.size(), 2);
        m_news->pause();
        QCOMPARE(m_news->requests(m_news->five), 3);
    }

    void probeAnsweredAfterClosingIsIgnored()
    {
        screen().appear();
        const int probe = m_news->http.waitingFor(m_news->five);
        QSignalSpy checking(&screen(), &NewsController::checkingChanged);
        QSignalSpy live(&screen(), &NewsController::isLiveChanged);
        screen().disappear();
        QVERIFY(m_news->http.wasCancelled(probe));
        m_news->http.answer(probe, 200);
        QVERIFY(m_news->players.isEmpty());
        QVERIFY(screen().isChecking());
        QVERIFY(checking.isEmpty());
        QVERIFY(live.isEmpty());
        QCOMPARE(m_news->http.count(), 1);
    }

    void statusDecodedAfterClosingIsIgnored()
    {
        screen().appear();
        m_news->probe(false);
        // The status has arrived and is still being decoded.
        m_news->answer(m_news->status, R"({"news": {"program_title": "Too late"}})");
        screen().disappear();
        m_news->waitForDecoding();
        QCOMPARE(m_news->store->status().news.programTitle, QString());
    }

    void noPassStartsAfterClosing()
    {
        m_news->open(true);
        screen().disappear();
        const int requestCount = m_news->http.count();
        QCOMPARE(m_news->clock.pendingTimers(), 0);
        m_news->clock.advance(1h);
        TVStatus moved;
        moved.news.hlsURL = u"/live/other.m3u8"_s;
        m_news->store->setStatus(moved);
        screen().pick(m_news->station(u"7"_s, m_news->seven));
        screen().press(Qt::Key_ChannelUp);
        QCOMPARE(m_news->http.count(), requestCount);
        QVERIFY(!screen().selected());
    }

    void destroyingScreenEndsPassAtAnyPoint_data()
    {
        rows<int>({"steps"}, {{"during the probe", 0},
                              {"during the refresh", 1},
                              {"while the status is decoded", 2},
                              {"during the pause", 3}});
    }

    void destroyingScreenEndsPassAtAnyPoint()
    {
        QFETCH(const int, steps);
        screen().appear();
        if (steps > 0)
            m_news->probe(true);
        if (steps > 1)
            m_news->answer(m_news->status, R"({"news": {"program_title": "Too late"}})");
        if (steps > 2)
            m_news->waitForDecoding();
        const QString title = m_news->store->status().news.programTitle;
        m_news->screen.reset();
        const int requestCount = m_news->http.count();
        m_news->clock.advance(1h);
        m_news->waitForDecoding();
        QCOMPARE(m_news->http.count(), requestCount + 1);
        QCOMPARE(m_news->store->status().news.programTitle, title);
        QVERIFY(!m_news->player());
        if (steps > 0)
            QCOMPARE(m_news->calls.first()->last(), u"clearItem"_s);
    }

private:
    NewsController& screen() { return *m_news->screen; }

    std::unique_ptr<NewsControllerFixture> m_news;
};

QUILLMERE_TEST(NewsClosingTest, QCoreApplication)

} // namespace quillmere

#include "NewsClosingTest.moc"
