#include "HubFixture.h"
#include "TestMain.h"

namespace quillmere {

/** Tests fetches that are cancelled by their callers or by destroying the client. */
class HubCancelTest : public HubFixture
{
    Q_OBJECT

private Q_SLOTS:
    void fetchWithCancelledTokenSendsNothing();
    void fetchCancelledWhileWaitingFailsAtOnce();
    void fetchCancelledWhileDecodingFailsAtOnce();
    void cancellingFinishedFetchChangesNothing();
    void droppedFetchIsSafe();
    void destroyingClientFailsWaitingFetches();
    void destroyingClientWhileDecodingFailsFetch();
    void fetchStartedWhileClientIsDestroyedFails();
};

void HubCancelTest::fetchWithCancelledTokenSendsNothing()
{
    TaskScope screen;
    const std::stop_token token = screen.token();
    screen.cancel();
    const auto result = pendingResult(m_hub->get<TVStatus>(statusPath, token));
    QVERIFY(isFinished(result));
    QCOMPARE(failure(result), cancelledText);
    QCOMPARE(m_http->count(), 0);
}

void HubCancelTest::fetchCancelledWhileWaitingFailsAtOnce()
{
    TaskScope screen;
    const auto result = pendingResult(m_hub->get<TVStatus>(statusPath, screen.token()));
    const auto other = pendingResult(m_hub->get<TVStatus>(statusPath));
    screen.cancel();
    QVERIFY(isFinished(result));
    QCOMPARE(failure(result), cancelledText);
    QVERIFY(m_http->wasCancelled(0));
    QVERIFY(!m_http->wasCancelled(1));
    m_http->answer(1, 200, "{}");
    QTRY_VERIFY(isFinished(other));
    QVERIFY(**other);
}

void HubCancelTest::fetchCancelledWhileDecodingFailsAtOnce()
{
    TaskScope screen;
    const auto result = pendingResult(m_hub->get<TVStatus>(statusPath, screen.token()));
    m_http->answer(0, 200, "{}");
    QVERIFY(!isFinished(result));
    screen.cancel();
    QVERIFY(isFinished(result));
    QCOMPARE(failure(result), cancelledText);
    // The client still works: the next answer is decoded after the one that was cancelled.
    const auto next = pendingResult(m_hub->get<TVStatus>(statusPath));
    m_http->answer(1, 200, "{}");
    QTRY_VERIFY(isFinished(next));
    QVERIFY(**next);
    QCOMPARE(failure(result), cancelledText);
}

void HubCancelTest::cancellingFinishedFetchChangesNothing()
{
    TaskScope screen;
    const auto result = pendingResult(m_hub->get<TVStatus>(statusPath, screen.token()));
    m_http->answer(0, 200, "{}");
    QTRY_VERIFY(isFinished(result));
    screen.cancel();
    QVERIFY(**result);
    QVERIFY(!m_http->wasCancelled(0));
}

void HubCancelTest::droppedFetchIsSafe()
{
    (void)m_hub->get<TVStatus>(statusPath);
    (void)m_hub->probe(u"/live/news/index.m3u8"_s);
    m_http->answer(0, 200, "{}");
    m_http->answer(1, 200);
    const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
    m_http->answer(2, 200, "{}");
    QTRY_VERIFY(isFinished(result));
}

void HubCancelTest::destroyingClientFailsWaitingFetches()
{
    TaskScope screen;
    const auto first = pendingResult(m_hub->get<TVStatus>(statusPath));
    const auto second = pendingResult(m_hub->tapes(u""_s, u""_s, 1, 200, screen.token()));
    m_hub.reset();
    QVERIFY(isFinished(first) && isFinished(second));
    QCOMPARE(failure(first), cancelledText);
    QCOMPARE(failure(second), cancelledText);
    QVERIFY(m_http->wasCancelled(0) && m_http->wasCancelled(1));
    screen.cancel();
}

void HubCancelTest::destroyingClientWhileDecodingFailsFetch()
{
    QList<PendingResult<HubResult<TapePage>>> results;
    const QByteArray large = "{\"items\":[" + QByteArray("{\"id\":1},").repeated(100'000) + "{}]}";
    for (int call = 0; call < 20; ++call) {
        results.append(pendingResult(m_hub->tapes(u""_s, u""_s, 1, 200)));
        m_http->answer(call, 200, large);
    }
    m_hub.reset();
    for (const auto& result : results) {
        QVERIFY(isFinished(result));
        QCOMPARE(failure(result), cancelledText);
    }
}

void HubCancelTest::fetchStartedWhileClientIsDestroyedFails()
{
    HubAPI& hub = *m_hub;
    const auto twice = [](HubAPI& client) -> QCoro::Task<HubResult<TVStatus>> {
        auto result = co_await client.get<TVStatus>(statusPath);
        if (!result)
            result = co_await client.get<TVStatus>(statusPath);
        co_return result;
    };
    const auto result = pendingResult(twice(hub));
    m_hub.reset();
    QVERIFY(isFinished(result));
    QCOMPARE(failure(result), cancelledText);
    QCOMPARE(m_http->count(), 1);
}

QUILLMERE_TEST(HubCancelTest, QCoreApplication)

} // namespace quillmere

#include "HubCancelTest.moc"
