#include "HubFixture.h"
#include "Rows.h"
#include "TestMain.h"

using namespace std::chrono_literals;

namespace quillmere {

/** Tests probes, which ask whether a stream exists at an address. */
class HubProbeTest : public HubFixture
{
    Q_OBJECT

private Q_SLOTS:
    void probeSucceedsOnlyWithStatus200_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {199, 200, 201, 204, 206, 299, 301, 304, 404, 500})
            QTest::addRow("%d", status) << status;
    }

    void probeSucceedsOnlyWithStatus200()
    {
        QFETCH(int, status);
        const auto result = pendingResult(m_hub->probe(u"/live/news/index.m3u8"_s));
        m_http->answer(0, status, "#EXTM3U\n");
        QTRY_VERIFY(*result == (status == 200));
    }

    void failedProbeReturnsFalse_data()
    {
        using Kind = HttpFailure::Kind;
        rows<Kind>({"kind"}, {{"network", Kind::Network},
                              {"timeout", Kind::TimedOut},
                              {"too large", Kind::TooLarge},
                              {"cut short", Kind::Truncated},
                              {"unreadable", Kind::Unreadable},
                              {"cancelled", Kind::Cancelled}});
    }

    void failedProbeReturnsFalse()
    {
        QFETCH(HttpFailure::Kind, kind);
        const auto result = pendingResult(m_hub->probe(u"/live/news/index.m3u8"_s));
        m_http->fail(0, u"No"_s, kind);
        QTRY_VERIFY(*result == false);
    }

    void probeBypassesCacheIgnoresBodyAndHasLimitOfEightSeconds()
    {
        pendingResult(m_hub->probe(u"council/index.m3u8"_s));
        const HttpRequest& request = m_http->request(0);
        QCOMPARE(request.url, QUrl(u"https://hub.test/council/index.m3u8"_s));
        QCOMPARE(request.cache, HttpRequest::Cache::Bypass);
        QCOMPARE(request.body, HttpRequest::Body::Ignore);
        QVERIFY(request.inactivityLimit == 8s);
        QVERIFY(request.overallLimit == 8s);
    }

    void probeWithoutAddressReturnsFalse()
    {
        const auto result = pendingResult(m_hub->probe(u""_s));
        QTRY_VERIFY(*result == false);
        QCOMPARE(m_http->count(), 0);
    }

    void cancelledProbeReturnsFalse()
    {
        TaskScope screen;
        const auto result = pendingResult(m_hub->probe(u"/a"_s, screen.token()));
        screen.cancel();
        QVERIFY(*result == false);
        QVERIFY(m_http->wasCancelled(0));
    }

    void probeReturnsFalseWhenClientIsDestroyed()
    {
        const auto result = pendingResult(m_hub->probe(u"/a"_s));
        m_hub.reset();
        QVERIFY(*result == false);
    }
};

QUILLMERE_TEST(HubProbeTest, QCoreApplication)

} // namespace quillmere

#include "HubProbeTest.moc"
