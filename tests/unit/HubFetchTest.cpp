#include "HubFixture.h"
#include "TestMain.h"

#include <QThread>

using namespace std::chrono_literals;

namespace quillmere {

/** Tests what the hub client returns for good answers, bad answers and failures. */
class HubFetchTest : public HubFixture
{
    Q_OBJECT

private Q_SLOTS:
    void errorHasDescription_data();
    void errorHasDescription();
    void onlyStatus2xxSucceeds_data();
    void onlyStatus2xxSucceeds();
    void unreadableBodyFails_data();
    void unreadableBodyFails();
    void invalidMemberIsDecodedAsDefault();
    void failedRequestHasReason_data();
    void failedRequestHasReason();
    void invalidPathSendsNothing();
    void absoluteAddressIsRequestedUnchanged();
    void fetchRevalidatesWithLimits();
    void decodingDoesNotBlockScreenThread();
    void answersOutOfOrderReachTheirCallers();
    void manyFetchesCanWaitAtOnce();
};

void HubFetchTest::errorHasDescription_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("text");
    QTest::newRow("404") << HubError::http(404).errorDescription() << u"The hub answered 404."_s;
    QTest::newRow("503") << HubError::http(503).errorDescription() << u"The hub answered 503."_s;
    QTest::newRow("transport") << HubError::transport(u"%1 No route."_s).errorDescription() << u"%1 No route."_s;
    QTest::newRow("bad address") << HubError::badURL().errorDescription() << u"That address didn't resolve."_s;
}

void HubFetchTest::errorHasDescription()
{
    QFETCH(QString, description);
    QTEST(description, "text");
}

void HubFetchTest::onlyStatus2xxSucceeds_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");
    QTest::newRow("199") << 199 << u"The hub answered 199."_s;
    QTest::newRow("200") << 200 << u""_s;
    QTest::newRow("206") << 206 << u""_s;
    QTest::newRow("299") << 299 << u""_s;
    QTest::newRow("300") << 300 << u"The hub answered 300."_s;
    QTest::newRow("304") << 304 << u"The hub answered 304."_s;
    QTest::newRow("404") << 404 << u"The hub answered 404."_s;
    QTest::newRow("503") << 503 << u"The hub answered 503."_s;
}

void HubFetchTest::onlyStatus2xxSucceeds()
{
    QFETCH(int, status);
    const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
    m_http->answer(0, status, "{}");
    QTRY_VERIFY(isFinished(result));
    QTEST(failure(result), "text");
    if (!**result)
        QCOMPARE((*result)->error() == HubError::http(status), true);
}

void HubFetchTest::unreadableBodyFails_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("an array") << "[]"_ba;
    QTest::newRow("null") << "null"_ba;
    QTest::newRow("a web page") << "<!DOCTYPE html><html><body>Welcome</body></html>"_ba;
    QTest::newRow("empty") << ""_ba;
    QTest::newRow("cut short") << "{\"news\":{\"tower_live\":tr"_ba;
    QTest::newRow("not UTF-8") << "{\"news\":\"\xE9\"}"_ba;
    QTest::newRow("text after the document") << "{}{}"_ba;
    QTest::newRow("too deep") << "{\"a\":" + QByteArray(600, '[') + QByteArray(600, ']') + '}';
}

void HubFetchTest::unreadableBodyFails()
{
    QFETCH(QByteArray, body);
    const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
    m_http->answer(0, 200, body);
    QTRY_VERIFY(isFinished(result));
    QCOMPARE(failure(result), unreadableText);
}

void HubFetchTest::invalidMemberIsDecodedAsDefault()
{
    const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
    m_http->answer(0, 200, R"({"news":{"tower_live":true,"weather":[1]},"rewindery":{"tapes":"many"}})");
    QTRY_VERIFY(isFinished(result));
    QVERIFY(**result);
    TVStatus expected;
    expected.news.towerLive = true;
    QVERIFY((*result)->value() == expected);
}

void HubFetchTest::failedRequestHasReason_data()
{
    QTest::addColumn<HttpFailure::Kind>("kind");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("text");
    using Kind = HttpFailure::Kind;
    QTest::newRow("network") << Kind::Network << u"Host hub.test not found"_s << u"Host hub.test not found"_s;
    QTest::newRow("no description") << Kind::Network << u""_s << u"The hub couldn't be reached."_s;
    QTest::newRow("timeout") << Kind::TimedOut << u"Timer 3"_s << u"The hub took too long to answer."_s;
    QTest::newRow("too large") << Kind::TooLarge << u"Cap"_s << u"The hub's answer was too big to read."_s;
    QTest::newRow("cut short") << Kind::Truncated << u""_s << u"The hub's answer was cut short."_s;
    QTest::newRow("unreadable") << Kind::Unreadable << u""_s << unreadableText;
    QTest::newRow("cancelled") << Kind::Cancelled << u""_s << cancelledText;
}

void HubFetchTest::failedRequestHasReason()
{
    QFETCH(HttpFailure::Kind, kind);
    QFETCH(QString, description);
    const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
    m_http->fail(0, description, kind);
    QTRY_VERIFY(isFinished(result));
    QTEST(failure(result), "text");
}

void HubFetchTest::invalidPathSendsNothing()
{
    for (const QString& path : {u""_s, u"https://"_s, u"file:///etc/passwd"_s}) {
        const auto result = pendingResult(m_hub->get<TVStatus>(path));
        QTRY_VERIFY(isFinished(result));
        QCOMPARE(failure(result), u"That address didn't resolve."_s);
    }
    QCOMPARE(m_http->count(), 0);
}

void HubFetchTest::absoluteAddressIsRequestedUnchanged()
{
    const auto result = pendingResult(m_hub->get<TVStatus>(u"https://elsewhere.test/status"_s));
    QCOMPARE(m_http->request(0).url, QUrl(u"https://elsewhere.test/status"_s));
}

void HubFetchTest::fetchRevalidatesWithLimits()
{
    pendingResult(m_hub->get<TVStatus>(statusPath));
    const HttpRequest& request = m_http->request(0);
    QCOMPARE(request.cache, HttpRequest::Cache::Revalidate);
    QCOMPARE(request.body, HttpRequest::Body::Read);
    QVERIFY(request.inactivityLimit == 20s);
    QVERIFY(request.overallLimit == 60s);
    QCOMPARE(request.maxBytes, 16 * 1024 * 1024);
}

void HubFetchTest::decodingDoesNotBlockScreenThread()
{
    const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
    m_http->answer(0, 200, "{}");
    QVERIFY(!isFinished(result));
    QTRY_VERIFY(isFinished(result));
    QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
}

void HubFetchTest::answersOutOfOrderReachTheirCallers()
{
    const auto first = pendingResult(m_hub->tape(1));
    const auto second = pendingResult(m_hub->tape(2));
    const auto third = pendingResult(m_hub->tape(3));
    m_http->answer(2, 200, R"({"id":3})");
    QTRY_VERIFY(isFinished(third));
    m_http->answer(1, 404);
    QTRY_VERIFY(isFinished(second));
    QVERIFY(!isFinished(first));
    m_http->answer(0, 200, R"({"id":1})");
    QTRY_VERIFY(isFinished(first));
    QCOMPARE((*first)->value().id, 1);
    QCOMPARE(failure(second), u"The hub answered 404."_s);
    QCOMPARE((*third)->value().id, 3);
}

void HubFetchTest::manyFetchesCanWaitAtOnce()
{
    QList<PendingResult<HubResult<Tape>>> results;
    for (int id = 0; id < 50; ++id)
        results.append(pendingResult(m_hub->tape(id)));
    QCOMPARE(m_http->count(), 50);
    for (int id = 49; id >= 0; --id)
        m_http->answer(id, 200, "{\"id\":" + QByteArray::number(id) + '}');
    for (int id = 0; id < 50; ++id) {
        QTRY_VERIFY(isFinished(results.at(id)));
        QCOMPARE((*results.at(id))->value().id, id);
    }
}

QUILLMERE_TEST(HubFetchTest, QCoreApplication)

} // namespace quillmere

#include "HubFetchTest.moc"
