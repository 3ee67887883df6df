#include "HubFixture.h"
#include "TestMain.h"

using namespace std::chrono_literals;

namespace quillmere {

/** Tests probes, which ask whether a stream exists at an address. */
class HubProbeTest : public HubFixture
{
    Q_OBJECT

private Q_SLOTS:
    void probeSucceedsOnlyWithStatus200_data();
    void probeSucceedsOnlyWithStatus200();
    void failedProbeReturnsFalse_data();
    void failedProbeReturnsFalse();
    void probeBypassesCacheIgnoresBodyAndHasLimitOfEightSeconds();
    void probeWithoutAddressReturnsFalse();
    void cancelledProbeReturnsFalse();
    void probeReturnsFalseWhenClientIsDestroyed();
};

void HubProbeTest::probeSucceedsOnlyWithStatus200_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {199, 200, 201, 204, 206, 299, 301, 304, 404, 500})
        QTest::addRow("%d", status) << status;
}

void HubProbeTest::probeSucceedsOnlyWithStatus200()
{
    QFETCH(int, status);
    const auto result = pendingResult(m_hub->probe(u"/live/news/index.m3u8"_s));
    m_http->answer(0, status, "#EXTM3U\n");
    QTRY_VERIFY(isFinished(result));
    QCOMPARE(result->value(), status == 200);
}

void HubProbeTest::failedProbeReturnsFalse_data()
{
    QTest::addColumn<HttpFailure::Kind>("kind");
    using Kind = HttpFailure::Kind;
    QTest::newRow("network") << Kind::Network;
    QTest::newRow("timeout") << Kind::TimedOut;
    QTest::newRow("too large") << Kind::TooLarge;
    QTest::newRow("cut short") << Kind::Truncated;
    QTest::newRow("unreadable") << Kind::Unreadable;
    QTest::newRow("cancelled") << Kind::Cancelled;
}

void HubProbeTest::failedProbeReturnsFalse()
{
    QFETCH(HttpFailure::Kind, kind);
    const auto result = pendingResult(m_hub->probe(u"/live/news/index.m3u8"_s));
    m_http->fail(0, u"No"_s, kind);
    QTRY_VERIFY(isFinished(result));
    QCOMPARE(result->value(), false);
}

void HubProbeTest::probeBypassesCacheIgnoresBodyAndHasLimitOfEightSeconds()
{
    pendingResult(m_hub->probe(u"council/index.m3u8"_s));
    const HttpRequest& request = m_http->request(0);
    QCOMPARE(request.url, QUrl(u"https://hub.test/council/index.m3u8"_s));
    QCOMPARE(request.cache, HttpRequest::Cache::Bypass);
    QCOMPARE(request.body, HttpRequest::Body::Ignore);
    QVERIFY(request.inactivityLimit == 8s);
    QVERIFY(request.overallLimit == 8s);
}

void HubProbeTest::probeWithoutAddressReturnsFalse()
{
    const auto result = pendingResult(m_hub->probe(u""_s));
    QTRY_VERIFY(isFinished(result));
    QCOMPARE(result->value(), false);
    QCOMPARE(m_http->count(), 0);
}

void HubProbeTest::cancelledProbeReturnsFalse()
{
    TaskScope screen;
    const auto result = pendingResult(m_hub->probe(u"/a"_s, screen.token()));
    screen.cancel();
    QVERIFY(isFinished(result));
    QCOMPARE(result->value(), false);
    QVERIFY(m_http->wasCancelled(0));
}

void HubProbeTest::probeReturnsFalseWhenClientIsDestroyed()
{
    const auto result = pendingResult(m_hub->probe(u"/a"_s));
    m_hub.reset();
    QVERIFY(isFinished(result));
    QCOMPARE(result->value(), false);
}

QUILLMERE_TEST(HubProbeTest, QCoreApplication)

} // namespace quillmere

#include "HubProbeTest.moc"
