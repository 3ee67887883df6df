#include "NewsController.h"
#include "NewsControllerFixture.h"
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
    void closingWhileLitStopsSoundAtOnce();
    void closingWhileLitShowsNoStandbyCard();
    void closingWhileDarkKeepsStandbyCard();
    void closingTwiceIsSafe();
    void reopenedScreenStartsAgain();
    void probeAnsweredAfterClosingIsIgnored();
    void statusDecodedAfterClosingIsIgnored();
    void noPassStartsAfterClosing();
    void destroyingScreenEndsPassAtAnyPoint_data();
    void destroyingScreenEndsPassAtAnyPoint();
    void destroyingScreenWhileLitReleasesStream();

private:
    NewsController& screen() { return *m_news->screen; }

    std::unique_ptr<NewsControllerFixture> m_news;
};

void NewsClosingTest::closingWhileLitStopsSoundAtOnce()
{
    m_news->open(true);
    screen().disappear();
    QVERIFY(!screen().player());
    QVERIFY(!m_news->players.first());
    QCOMPARE(m_news->calls.first()->last(2), QStringList({u"pause"_s, u"clearItem"_s}));
}

void NewsClosingTest::closingWhileLitShowsNoStandbyCard()
{
    m_news->open(true);
    bool wasOnStandby = false;
    connect(&screen(), &NewsController::pictureChanged, this,
            [&] { wasOnStandby = wasOnStandby || screen().isOnStandby(); });
    screen().disappear();
    QVERIFY(!screen().isLit());
    QVERIFY(!screen().isOnStandby());
    QVERIFY(!wasOnStandby);
}

void NewsClosingTest::closingWhileDarkKeepsStandbyCard()
{
    m_news->open(false);
    screen().disappear();
    QVERIFY(screen().isOnStandby());
}

void NewsClosingTest::closingTwiceIsSafe()
{
    m_news->open(true);
    screen().disappear();
    screen().disappear();
    QVERIFY(!screen().isOnStandby());
}

void NewsClosingTest::reopenedScreenStartsAgain()
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
    QCOMPARE(m_news->requests(NewsControllerFixture::five), 3);
}

void NewsClosingTest::probeAnsweredAfterClosingIsIgnored()
{
    screen().appear();
    const int probe = m_news->http.waitingFor(NewsControllerFixture::five);
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

void NewsClosingTest::statusDecodedAfterClosingIsIgnored()
{
    screen().appear();
    m_news->probe(false);
    // The status has arrived and is still being decoded.
    m_news->answer(NewsControllerFixture::status, R"({"news": {"program_title": "Too late"}})");
    screen().disappear();
    m_news->waitForDecoding();
    QCOMPARE(m_news->store->status().news.programTitle, QString());
}

void NewsClosingTest::noPassStartsAfterClosing()
{
    m_news->open(true);
    screen().disappear();
    const int requestCount = m_news->http.count();
    QCOMPARE(m_news->clock.pendingTimers(), 0);
    m_news->clock.advance(1h);
    TVStatus moved;
    moved.news.hlsURL = u"/live/other.m3u8"_s;
    m_news->store->setStatus(moved);
    screen().pick(NewsControllerFixture::station(u"7"_s, NewsControllerFixture::seven));
    screen().press(Qt::Key_ChannelUp);
    QCOMPARE(m_news->http.count(), requestCount);
    QVERIFY(!screen().selected());
}

void NewsClosingTest::destroyingScreenEndsPassAtAnyPoint_data()
{
    QTest::addColumn<int>("steps");
    QTest::newRow("during the probe") << 0;
    QTest::newRow("during the refresh") << 1;
    QTest::newRow("while the status is decoded") << 2;
    QTest::newRow("during the pause") << 3;
}

void NewsClosingTest::destroyingScreenEndsPassAtAnyPoint()
{
    QFETCH(const int, steps);
    screen().appear();
    if (steps > 0)
        m_news->probe(true);
    if (steps > 1)
        m_news->answer(NewsControllerFixture::status, R"({"news": {"program_title": "Too late"}})");
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
}

void NewsClosingTest::destroyingScreenWhileLitReleasesStream()
{
    m_news->open(true);
    m_news->screen.reset();
    QVERIFY(!m_news->players.first());
    QCOMPARE(m_news->calls.first()->last(), u"clearItem"_s);
}

QUILLMERE_TEST(NewsClosingTest, QCoreApplication)

} // namespace quillmere

#include "NewsClosingTest.moc"
