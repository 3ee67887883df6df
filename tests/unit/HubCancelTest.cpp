#include "HubFixture.h"
#include "TestMain.h"

namespace quillmere {

/** Tests fetches that are cancelled by their callers or by destroying the client. */
class HubCancelTest : public HubFixture
{
    Q_OBJECT

private Q_SLOTS:
    void fetchWithCancelledTokenSendsNothing()
    {
        TaskScope screen;
        const std::stop_token token = screen.token();
        screen.cancel();
        const auto result = pendingResult(m_hub->get<TVStatus>(statusPath, token));
        QCOMPARE(outcome(result), cancelledText);
        QCOMPARE(m_http->count(), 0);
    }

    void fetchCancelledWhileWaitingFailsAtOnce()
    {
        TaskScope screen;
        const auto result = pendingResult(m_hub->get<TVStatus>(statusPath, screen.token()));
        const auto other = pendingResult(m_hub->get<TVStatus>(statusPath));
        screen.cancel();
        QCOMPARE(outcome(result), cancelledText);
        QVERIFY(m_http->wasCancelled(0));
        QVERIFY(!m_http->wasCancelled(1));
        m_http->answer(1, 200, "{}");
        QTRY_COMPARE(outcome(other), u"success"_s);
    }

    void fetchCancelledWhileDecodingFailsAtOnce()
    {
        TaskScope screen;
        const auto result = pendingResult(m_hub->get<TVStatus>(statusPath, screen.token()));
        m_http->answer(0, 200, "{}");
        QVERIFY(!isFinished(result));
        screen.cancel();
        QCOMPARE(outcome(result), cancelledText);
        // The client still works: the next answer is decoded after the one that was cancelled.
        const auto next = pendingResult(m_hub->get<TVStatus>(statusPath));
        m_http->answer(1, 200, "{}");
        QTRY_COMPARE(outcome(next), u"success"_s);
        QCOMPARE(outcome(result), cancelledText);
    }

    void cancellingFinishedFetchChangesNothing()
    {
        TaskScope screen;
        const auto result = pendingResult(m_hub->get<TVStatus>(statusPath, screen.token()));
        m_http->answer(0, 200, "{}");
        QTRY_VERIFY(isFinished(result));
        screen.cancel();
        QCOMPARE(outcome(result), u"success"_s);
        QVERIFY(!m_http->wasCancelled(0));
    }

    void droppedFetchIsSafe()
    {
        (void)m_hub->get<TVStatus>(statusPath);
        (void)m_hub->probe(u"/live/news/index.m3u8"_s);
        m_http->answer(0, 200, "{}");
        m_http->answer(1, 200);
        const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
        m_http->answer(2, 200, "{}");
        QTRY_VERIFY(isFinished(result));
    }

    void destroyingClientFailsWaitingFetches()
    {
        TaskScope screen;
        const auto first = pendingResult(m_hub->get<TVStatus>(statusPath));
        const auto second = pendingResult(m_hub->tapes(u""_s, u""_s, 1, 200, screen.token()));
        m_hub.reset();
        QCOMPARE(outcome(first), cancelledText);
        QCOMPARE(outcome(second), cancelledText);
        QVERIFY(m_http->wasCancelled(0) && m_http->wasCancelled(1));
        screen.cancel();
    }

    void destroyingClientWhileDecodingFailsFetch()
    {
        QList<PendingResult<HubResult<TapePage>>> results;
        const QByteArray large = "{\"items\":[" + QByteArray("{\"id\":1},").repeated(100'000) + "{}]}";
        for (int call = 0; call < 20; ++call) {
            results.append(pendingResult(m_hub->tapes(u""_s, u""_s, 1, 200)));
            m_http->answer(call, 200, large);
        }
        m_hub.reset();
        for (const auto& result : results)
            QCOMPARE(outcome(result), cancelledText);
    }

    void fetchStartedWhileClientIsDestroyedFails()
    {
        const auto twice = [](HubAPI& client) -> QCoro::Task<HubResult<TVStatus>> {
            auto result = co_await client.get<TVStatus>(statusPath);
            if (!result)
                result = co_await client.get<TVStatus>(statusPath);
            co_return result;
        };
        const auto result = pendingResult(twice(*m_hub));
        m_hub.reset();
        QCOMPARE(outcome(result), cancelledText);
        QCOMPARE(m_http->count(), 1);
    }
};

QUILLMERE_TEST(HubCancelTest, QCoreApplication)

} // namespace quillmere

#include "HubCancelTest.moc"
