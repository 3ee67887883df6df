#include "HttpServerFixture.h"
#include "TestMain.h"

#include <QTest>

namespace quillmere {

/** Caching of answers and their revalidation. */
class HttpRevalidationTest : public HttpServerFixture
{
    Q_OBJECT

    HttpOutcome fetchRoot(HttpRequest::Cache cache = HttpRequest::Cache::Revalidate)
    {
        HttpRequest request = requestTo(m_server->url());
        request.cache = cache;
        return fetch(*m_client, request);
    }
    const QMap<QByteArray, QByteArray>& sent() const { return m_server->requests().last().headers; }
    bool sentNoValidator() const { return !sent().contains("if-none-match") && !sent().contains("if-modified-since"); }

private Q_SLOTS:
    void firstRequestHasNoValidator()
    {
        m_server->on("/", FaultServer::answer(200, "body"));
        fetchRoot();
        QVERIFY(sentNoValidator());
        QVERIFY(!sent().contains("cache-control"));
        QVERIFY(!sent().contains("pragma"));
        QVERIFY(sent().value("accept-encoding").contains("gzip"));
    }

    void notModifiedAnswerReturnsCachedBody_data()
    {
        QTest::addColumn<QByteArray>("header");
        QTest::addColumn<QByteArray>("condition");
        QTest::addColumn<QByteArray>("validator");
        QTest::newRow("ETag") << QByteArray("ETag: \"one\"") << QByteArray("if-none-match") << QByteArray("\"one\"");
        QTest::newRow("weak ETag") << QByteArray("ETag: W/\"one\"") << QByteArray("if-none-match")
                                   << QByteArray("W/\"one\"");
        QTest::newRow("Last-Modified") << QByteArray("Last-Modified: Tue, 03 Jun 2025 17:00:00 GMT")
                                       << QByteArray("if-modified-since")
                                       << QByteArray("Tue, 03 Jun 2025 17:00:00 GMT");
    }
    void notModifiedAnswerReturnsCachedBody()
    {
        QFETCH(QByteArray, header);
        QFETCH(QByteArray, condition);
        m_server->on("/", FaultServer::answer(200, gzip("body"),
                                              {header, "Content-Encoding: gzip", "Cache-Control: max-age=60"}));
        QCOMPARE(fetchRoot().body(), QByteArray("body"));
        m_server->on("/", FaultServer::answer(304, {}, {header}));
        for (int again = 0; again < 2; ++again) {
            const HttpOutcome outcome = fetchRoot();
            QTEST(sent().value(condition), "validator");
            QVERIFY(!sent().contains("cache-control"));
            QCOMPARE(outcome.status(), 200);
            QCOMPARE(outcome.body(), QByteArray("body"));
        }
        QCOMPARE(m_server->requests().size(), 3);
    }

    void bothValidatorsAreSent()
    {
        m_server->on("/",
                     FaultServer::answer(200, "body", {"ETag: \"1\"", "Last-Modified: Tue, 03 Jun 2025 17:00:00 GMT"}));
        fetchRoot();
        fetchRoot();
        QVERIFY(sent().contains("if-none-match") && sent().contains("if-modified-since"));
    }

    void changedAnswerReplacesCachedOne()
    {
        m_server->on("/", FaultServer::answer(200, "old", {"ETag: \"1\""}));
        fetchRoot();
        m_server->on("/", FaultServer::answer(200, "new", {"ETag: \"2\""}));
        QCOMPARE(fetchRoot().body(), QByteArray("new"));
        QCOMPARE(sent().value("if-none-match"), QByteArray("\"1\""));
        m_server->on("/", FaultServer::answer(304));
        QCOMPARE(fetchRoot().body(), QByteArray("new"));
        QCOMPARE(sent().value("if-none-match"), QByteArray("\"2\""));
    }

    void uncacheableAnswerIsNotCached_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<FaultServer::Headers>("headers");
        QTest::newRow("no validator") << 200 << FaultServer::Headers{"Cache-Control: max-age=60"};
        QTest::newRow("no-store") << 200 << FaultServer::Headers{"ETag: \"2\"", "Cache-Control: private, No-Store"};
        QTest::newRow("not found") << 404 << FaultServer::Headers{"ETag: \"2\""};
        QTest::newRow("partial") << 206 << FaultServer::Headers{"ETag: \"2\""};
        QTest::newRow("no content") << 204 << FaultServer::Headers{"ETag: \"2\""};
        QTest::newRow("server error") << 503 << FaultServer::Headers{"ETag: \"2\""};
    }
    void uncacheableAnswerIsNotCached()
    {
        QFETCH(int, status);
        QFETCH(FaultServer::Headers, headers);
        m_server->on("/", FaultServer::answer(200, "kept", {"ETag: \"1\""}));
        fetchRoot();
        m_server->on("/", FaultServer::answer(status, "other", headers));
        QCOMPARE(fetchRoot().status(), status);
        QCOMPARE(sent().value("if-none-match"), QByteArray("\"1\""));
        fetchRoot();
        QVERIFY(sentNoValidator());
    }

    void cachedAnswerRemainsAfterTransportFailure()
    {
        m_server->on("/", FaultServer::answer(200, "kept", {"ETag: \"1\""}));
        fetchRoot();
        m_server->on("/", FaultServer::sendAndClose("HTTP/1.1 200 OK\r\nETag: \"2\"\r\nContent-Length: 9\r\n\r\nhalf"));
        QVERIFY(fetchRoot().failedWith(HttpFailure::Kind::Network));
        m_server->on("/", FaultServer::answer(304));
        QCOMPARE(fetchRoot().body(), QByteArray("kept"));
    }

    void bypassNeitherUsesNorChangesCache()
    {
        m_server->on("/", FaultServer::answer(200, "kept", {"ETag: \"1\""}));
        fetchRoot();
        m_server->on("/", FaultServer::answer(200, "probed", {"ETag: \"2\""}));
        QCOMPARE(fetchRoot(HttpRequest::Cache::Bypass).body(), QByteArray("probed"));
        QVERIFY(sentNoValidator());
        m_server->on("/", FaultServer::answer(304));
        QCOMPARE(fetchRoot().body(), QByteArray("kept"));
        QCOMPARE(sent().value("if-none-match"), QByteArray("\"1\""));
    }

    void unrequested304IsReturned_data()
    {
        QTest::addColumn<HttpRequest::Cache>("cache");
        QTest::newRow("revalidate") << HttpRequest::Cache::Revalidate;
        QTest::newRow("bypass") << HttpRequest::Cache::Bypass;
    }
    void unrequested304IsReturned()
    {
        QFETCH(HttpRequest::Cache, cache);
        m_server->on("/", FaultServer::answer(304));
        const HttpOutcome outcome = fetchRoot(cache);
        QCOMPARE(outcome.status(), 304);
        QCOMPARE(outcome.body(), QByteArray());
    }

    void urlsAreCachedSeparately()
    {
        for (const QByteArray page : {"1", "2"}) {
            m_server->on("/tapes", FaultServer::answer(200, "page " + page, {"ETag: \"" + page + "\""}));
            fetch(*m_client, requestTo(m_server->url("/tapes?page=" + page)));
            QVERIFY(sentNoValidator());
        }
        m_server->on("/tapes", FaultServer::answer(304));
        QCOMPARE(fetch(*m_client, requestTo(m_server->url("/tapes?page=1"))).body(), QByteArray("page 1"));
        QCOMPARE(fetch(*m_client, requestTo(m_server->url("/tapes?page=2"))).body(), QByteArray("page 2"));
    }

    void redirectedAnswerIsNotCached()
    {
        m_server->on("/", FaultServer::redirect("/there"));
        m_server->on("/there", FaultServer::answer(200, "found", {"ETag: \"1\""}));
        fetchRoot();
        fetchRoot();
        QVERIFY(sentNoValidator());
    }

    void validatorIsNotSentToRedirectTarget()
    {
        m_server->on("/", FaultServer::answer(200, "kept", {"ETag: \"1\""}));
        fetchRoot();
        m_server->on("/", FaultServer::redirect("/there"));
        m_server->on("/there", [](const FaultServer::Request& request) {
            const bool isConfirmed = request.headers.value("if-none-match") == "\"1\"";
            (isConfirmed ? FaultServer::answer(304) : FaultServer::answer(200, "found"))(request);
        });
        QCOMPARE(fetchRoot().body(), QByteArray("found"));
    }

    void cacheIsLimitedToEightMebibytes()
    {
        constexpr int mebi = 1024 * 1024;
        for (int part = 0; part < 5; ++part) {
            const QByteArray path = "/" + QByteArray::number(part);
            m_server->on(path, FaultServer::answer(200, QByteArray(2 * mebi, 'b'), {"ETag: \"1\""}));
            fetch(*m_client, requestTo(m_server->url(path)));
        }
        int kept = 0;
        for (int part = 4; part >= 0; --part) {
            const QByteArray path = "/" + QByteArray::number(part);
            fetch(*m_client, requestTo(m_server->url(path)));
            kept += sentNoValidator() ? 0 : 1;
        }
        QCOMPARE(kept, 3);
    }

    void answerLargerThanCacheIsNotCached()
    {
        m_server->on("/", FaultServer::answer(200, QByteArray(9 * 1024 * 1024, 'b'), {"ETag: \"1\""}));
        fetchRoot();
        fetchRoot();
        QVERIFY(sentNoValidator());
    }
};

QUILLMERE_TEST(HttpRevalidationTest, QCoreApplication)

} // namespace quillmere

#include "HttpRevalidationTest.moc"
