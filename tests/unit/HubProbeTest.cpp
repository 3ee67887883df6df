#include "HubOnScript.h"

using namespace std::chrono_literals;

/** Whether something is there at an address, in a yes or a no. */
class HubProbeTest : public HubOnScript
{
    Q_OBJECT

private Q_SLOTS:
    void aProbeWantsStatus200Exactly_data();
    void aProbeWantsStatus200Exactly();
    void aProbeThatFailsIsAnsweredNo_data();
    void aProbeThatFailsIsAnsweredNo();
    void aProbeBypassesTheCacheWantsNoBodyAndLastsEightSeconds();
    void aProbeWithoutAddressIsAnsweredNo();
    void aCancelledProbeIsAnsweredNo();
    void destroyingTheClientAnswersAProbeNo();
};

void HubProbeTest::aProbeWantsStatus200Exactly_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {199, 200, 201, 204, 206, 299, 301, 304, 404, 500})
        QTest::addRow("%d", status) << status;
}

void HubProbeTest::aProbeWantsStatus200Exactly()
{
    QFETCH(int, status);
    const auto result = kept(m_hub->probe(u"/live/news/index.m3u8"_s));
    m_http->answer(0, status, "#EXTM3U\n");
    QTRY_VERIFY(isThere(result));
    QCOMPARE(result->value(), status == 200);
}

void HubProbeTest::aProbeThatFailsIsAnsweredNo_data()
{
    QTest::addColumn<HttpFailure::Kind>("kind");
    using Kind = HttpFailure::Kind;
    QTest::newRow("network") << Kind::Network;
    QTest::newRow("late") << Kind::TimedOut;
    QTest::newRow("large") << Kind::TooLarge;
    QTest::newRow("cut short") << Kind::CutShort;
    QTest::newRow("unreadable") << Kind::Unreadable;
    QTest::newRow("cancelled") << Kind::Cancelled;
}

void HubProbeTest::aProbeThatFailsIsAnsweredNo()
{
    QFETCH(HttpFailure::Kind, kind);
    const auto result = kept(m_hub->probe(u"/live/news/index.m3u8"_s));
    m_http->fail(0, u"No"_s, kind);
    QTRY_VERIFY(isThere(result));
    QCOMPARE(result->value(), false);
}

void HubProbeTest::aProbeBypassesTheCacheWantsNoBodyAndLastsEightSeconds()
{
    kept(m_hub->probe(u"council/index.m3u8"_s));
    const HttpRequest& request = m_http->request(0);
    QCOMPARE(request.url, QUrl(u"https://hub.test/council/index.m3u8"_s));
    QCOMPARE(request.cache, HttpRequest::Cache::Bypass);
    QCOMPARE(request.body, HttpRequest::Body::Ignore);
    QVERIFY(request.inactivityLimit == 8s);
    QVERIFY(request.overallLimit == 8s);
}

void HubProbeTest::aProbeWithoutAddressIsAnsweredNo()
{
    const auto result = kept(m_hub->probe(u""_s));
    QTRY_VERIFY(isThere(result));
    QCOMPARE(result->value(), false);
    QCOMPARE(m_http->count(), 0);
}

void HubProbeTest::aCancelledProbeIsAnsweredNo()
{
    TaskScope screen;
    const auto result = kept(m_hub->probe(u"/a"_s, screen.token()));
    screen.cancel();
    QVERIFY(isThere(result));
    QCOMPARE(result->value(), false);
    QVERIFY(m_http->wasCancelled(0));
}

void HubProbeTest::destroyingTheClientAnswersAProbeNo()
{
    const auto result = kept(m_hub->probe(u"/a"_s));
    m_hub.reset();
    QVERIFY(isThere(result));
    QCOMPARE(result->value(), false);
}

QTEST_GUILESS_MAIN(HubProbeTest)
#include "HubProbeTest.moc"
