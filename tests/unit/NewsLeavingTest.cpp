#include "NewsController.h"
#include "NewsOnScript.h"

#include <QSignalSpy>
#include <QTest>

/** The news channel's screen going away: what ends with it, and what an answer that comes too late may still change. */
class NewsLeavingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_news = std::make_unique<NewsOnScript>(); }
    void cleanup() { m_news.reset(); }
    void leavingWhileLitSilencesAtOnce();
    void leavingWhileLitShowsNoCard();
    void leavingWhileDarkKeepsTheCard();
    void leavingTwiceIsSafe();
    void aScreenShownAgainBeginsAnew();
    void aProbeAnsweredAfterTheScreenHasGoneChangesNothing();
    void aStatusThatArrivesAfterTheScreenHasGoneChangesNothing();
    void noPassFollowsTheScreensEnd();
    void destroyingTheScreenEndsItsPassAtAnyPoint_data();
    void destroyingTheScreenEndsItsPassAtAnyPoint();
    void destroyingTheScreenWhileLitLetsGoOfTheStream();

private:
    NewsController& screen() { return *m_news->screen; }

    std::unique_ptr<NewsOnScript> m_news;
};

void NewsLeavingTest::leavingWhileLitSilencesAtOnce()
{
    m_news->open(true);
    screen().disappear();
    QVERIFY(!screen().player());
    QVERIFY(!m_news->players.first());
    QCOMPARE(m_news->calls.first()->last(2), QStringList({u"pause"_s, u"letGo"_s}));
}

void NewsLeavingTest::leavingWhileLitShowsNoCard()
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

void NewsLeavingTest::leavingWhileDarkKeepsTheCard()
{
    m_news->open(false);
    screen().disappear();
    QVERIFY(screen().isOnStandby());
}

void NewsLeavingTest::leavingTwiceIsSafe()
{
    m_news->open(true);
    screen().disappear();
    screen().disappear();
    QVERIFY(!screen().isOnStandby());
}

void NewsLeavingTest::aScreenShownAgainBeginsAnew()
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
    QCOMPARE(m_news->requests(NewsOnScript::five), 3);
}

void NewsLeavingTest::aProbeAnsweredAfterTheScreenHasGoneChangesNothing()
{
    screen().appear();
    const int probe = m_news->store.http.waitingFor(NewsOnScript::five);
    QSignalSpy checking(&screen(), &NewsController::checkingChanged);
    QSignalSpy live(&screen(), &NewsController::isLiveChanged);
    screen().disappear();
    QVERIFY(m_news->store.http.wasCancelled(probe));
    m_news->store.http.answer(probe, 200);
    QVERIFY(m_news->players.isEmpty());
    QVERIFY(screen().isChecking());
    QVERIFY(checking.isEmpty());
    QVERIFY(live.isEmpty());
    QCOMPARE(m_news->store.http.count(), 1);
}

void NewsLeavingTest::aStatusThatArrivesAfterTheScreenHasGoneChangesNothing()
{
    screen().appear();
    m_news->probe(false);
    // Answered, and still being decoded.
    m_news->store.answer(NewsOnScript::status, R"({"news": {"program_title": "Too late"}})");
    screen().disappear();
    m_news->store.settle();
    QCOMPARE(m_news->store->status().news.programTitle, QString());
}

void NewsLeavingTest::noPassFollowsTheScreensEnd()
{
    m_news->open(true);
    screen().disappear();
    const int asked = m_news->store.http.count();
    QCOMPARE(m_news->clock.pendingTimers(), 0);
    m_news->clock.advance(1h);
    TVStatus moved;
    moved.news.hlsURL = u"/live/other.m3u8"_s;
    m_news->store->setStatus(moved);
    screen().pick(NewsOnScript::station(u"7"_s, NewsOnScript::seven));
    screen().press(Qt::Key_ChannelUp);
    QCOMPARE(m_news->store.http.count(), asked);
    QVERIFY(!screen().selected());
}

void NewsLeavingTest::destroyingTheScreenEndsItsPassAtAnyPoint_data()
{
    QTest::addColumn<int>("steps");
    QTest::newRow("during the probe") << 0;
    QTest::newRow("during the refresh") << 1;
    QTest::newRow("while the status is decoded") << 2;
    QTest::newRow("during the pause") << 3;
}

void NewsLeavingTest::destroyingTheScreenEndsItsPassAtAnyPoint()
{
    QFETCH(const int, steps);
    screen().appear();
    if (steps > 0)
        m_news->probe(true);
    if (steps > 1)
        m_news->store.answer(NewsOnScript::status, R"({"news": {"program_title": "Too late"}})");
    if (steps > 2)
        m_news->store.settle();
    const QString title = m_news->store->status().news.programTitle;
    m_news->screen.reset();
    const int asked = m_news->store.http.count();
    m_news->clock.advance(1h);
    m_news->store.settle();
    QCOMPARE(m_news->store.http.count(), asked + 1);
    QCOMPARE(m_news->store->status().news.programTitle, title);
    QVERIFY(!m_news->player());
}

void NewsLeavingTest::destroyingTheScreenWhileLitLetsGoOfTheStream()
{
    m_news->open(true);
    m_news->screen.reset();
    QVERIFY(!m_news->players.first());
    QCOMPARE(m_news->calls.first()->last(), u"letGo"_s);
}

QTEST_GUILESS_MAIN(NewsLeavingTest)
#include "NewsLeavingTest.moc"
