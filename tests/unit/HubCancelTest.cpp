#include "HubOnScript.h"

/** Fetches that are called off, by their callers or with the client. */
class HubCancelTest : public HubOnScript
{
    Q_OBJECT

private Q_SLOTS:
    void aFetchCancelledBeforehandAsksNobody();
    void aFetchCancelledWhileWaitingFailsAtOnce();
    void aFetchCancelledWhileDecodingFailsAtOnce();
    void cancellingAFinishedFetchChangesNothing();
    void aCallerThatForgotItsFetchHarmsNobody();
    void destroyingTheClientFailsWhatStillWaits();
    void destroyingTheClientWhileItDecodesFailsTheFetch();
    void aFetchStartedByAFailingOneFailsWithIt();
};

void HubCancelTest::aFetchCancelledBeforehandAsksNobody()
{
    TaskScope screen;
    const CancelToken token = screen.token();
    screen.cancel();
    const auto result = kept(m_hub->get<TVStatus>(statusPath, token));
    QVERIFY(isThere(result));
    QCOMPARE(failure(result), calledOff);
    QCOMPARE(m_http->count(), 0);
}

void HubCancelTest::aFetchCancelledWhileWaitingFailsAtOnce()
{
    TaskScope screen;
    const auto result = kept(m_hub->get<TVStatus>(statusPath, screen.token()));
    const auto other = kept(m_hub->get<TVStatus>(statusPath));
    screen.cancel();
    QVERIFY(isThere(result));
    QCOMPARE(failure(result), calledOff);
    QVERIFY(m_http->wasCancelled(0));
    QVERIFY(!m_http->wasCancelled(1));
    m_http->answer(1, 200, "{}");
    QTRY_VERIFY(isThere(other));
    QVERIFY(**other);
}

void HubCancelTest::aFetchCancelledWhileDecodingFailsAtOnce()
{
    TaskScope screen;
    const auto result = kept(m_hub->get<TVStatus>(statusPath, screen.token()));
    m_http->answer(0, 200, "{}");
    QVERIFY(!isThere(result));
    screen.cancel();
    QVERIFY(isThere(result));
    QCOMPARE(failure(result), calledOff);
    // The client goes on: the next one is decoded behind the one that nobody wants.
    const auto next = kept(m_hub->get<TVStatus>(statusPath));
    m_http->answer(1, 200, "{}");
    QTRY_VERIFY(isThere(next));
    QVERIFY(**next);
    QCOMPARE(failure(result), calledOff);
}

void HubCancelTest::cancellingAFinishedFetchChangesNothing()
{
    TaskScope screen;
    const auto result = kept(m_hub->get<TVStatus>(statusPath, screen.token()));
    m_http->answer(0, 200, "{}");
    QTRY_VERIFY(isThere(result));
    screen.cancel();
    QVERIFY(**result);
    QVERIFY(!m_http->wasCancelled(0));
}

void HubCancelTest::aCallerThatForgotItsFetchHarmsNobody()
{
    (void)m_hub->get<TVStatus>(statusPath);
    (void)m_hub->probe(u"/live/news/index.m3u8"_s);
    m_http->answer(0, 200, "{}");
    m_http->answer(1, 200);
    const auto result = kept(m_hub->get<TVStatus>(statusPath));
    m_http->answer(2, 200, "{}");
    QTRY_VERIFY(isThere(result));
}

void HubCancelTest::destroyingTheClientFailsWhatStillWaits()
{
    TaskScope screen;
    const auto first = kept(m_hub->get<TVStatus>(statusPath));
    const auto second = kept(m_hub->tapes(u""_s, u""_s, 1, 200, screen.token()));
    m_hub.reset();
    QVERIFY(isThere(first) && isThere(second));
    QCOMPARE(failure(first), calledOff);
    QCOMPARE(failure(second), calledOff);
    QVERIFY(m_http->wasCancelled(0) && m_http->wasCancelled(1));
    screen.cancel();
}

void HubCancelTest::destroyingTheClientWhileItDecodesFailsTheFetch()
{
    QList<Kept<HubResult<TapePage>>> results;
    const QByteArray large = "{\"items\":[" + QByteArray("{\"id\":1},").repeated(100'000) + "{}]}";
    for (int call = 0; call < 20; ++call) {
        results.append(kept(m_hub->tapes(u""_s, u""_s, 1, 200)));
        m_http->answer(call, 200, large);
    }
    m_hub.reset();
    for (const auto& result : results) {
        QVERIFY(isThere(result));
        QCOMPARE(failure(result), calledOff);
    }
}

void HubCancelTest::aFetchStartedByAFailingOneFailsWithIt()
{
    HubAPI& hub = *m_hub;
    const auto twice = [](HubAPI& client) -> QCoro::Task<HubResult<TVStatus>> {
        auto result = co_await client.get<TVStatus>(statusPath);
        if (!result)
            result = co_await client.get<TVStatus>(statusPath);
        co_return result;
    };
    const auto result = kept(twice(hub));
    m_hub.reset();
    QVERIFY(isThere(result));
    QCOMPARE(failure(result), calledOff);
    QCOMPARE(m_http->count(), 1);
}

QTEST_GUILESS_MAIN(HubCancelTest)
#include "HubCancelTest.moc"
