#include "HttpServerFixture.h"
#include "Rows.h"
#include "TestMain.h"

namespace quillmere {

/** Caching of answers and their revalidation. */
class HttpRevalidationTest : public HttpServerFixture
{
    Q_OBJECT

    HttpOutcome getWith(HttpRequest::Cache cache)
    {
        HttpRequest request = requestTo(m_server->url());
        request.cache = cache;
        return fetch(*m_client, request);
    }
    const QMap<QByteArray, QByteArray>& sent() const { return m_server->requests().last().headers; }
    bool sentNoValidator() const { return !sent().contains("if-none-match") && !sent().contains("if-modified-since"); }

    void cacheAnswer()
    {
        m_server->on("/", FaultServer::answer(200, "kept", {"ETag: \"1\""}));
        get();
    }

private Q_SLOTS:
    void firstRequestHasNoValidator()
    {
        m_server->on("/", FaultServer::answer(200, "body"));
        get();
        QVERIFY(sentNoValidator());
        QVERIFY(!sent().contains("cache-control"));
        QVERIFY(!sent().contains("pragma"));
        QVERIFY(sent().value("accept-encoding").contains("gzip"));
    }

    void notModifiedAnswerReturnsCachedBody_data()
    {
        const QByteArray time = "Tue, 03 Jun 2025 17:00:00 GMT";
        rows<QByteArray, QByteArray, QByteArray>(
            {"header", "condition", "validator"},
            {{"ETag", "ETag: \"one\"", "if-none-match", "\"one\""},
             {"weak ETag", "ETag: W/\"one\"", "if-none-match", "W/\"one\""},
             {"Last-Modified", "Last-Modified: " + time, "if-modified-since", time}});
    }
    void notModifiedAnswerReturnsCachedBody()
    {
        QFETCH(QByteArray, header);
        QFETCH(QByteArray, condition);
        m_server->on("/", FaultServer::answer(200, gzip("body"),
                                              {header, "Content-Encoding: gzip", "Cache-Control: max-age=60"}));
        QCOMPARE(get().body(), QByteArray("body"));
        m_server->on("/", FaultServer::answer(304, {}, {header}));
        for (int again = 0; again < 2; ++again) {
            const HttpOutcome outcome = get();
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
        get();
        get();
        QVERIFY(sent().contains("if-none-match") && sent().contains("if-modified-since"));
    }

    void changedAnswerReplacesCachedOne()
    {
        cacheAnswer();
        m_server->on("/", FaultServer::answer(200, "new", {"ETag: \"2\""}));
        QCOMPARE(get().body(), QByteArray("new"));
        QCOMPARE(sent().value("if-none-match"), QByteArray("\"1\""));
        m_server->on("/", FaultServer::answer(304));
        QCOMPARE(get().body(), QByteArray("new"));
        QCOMPARE(sent().value("if-none-match"), QByteArray("\"2\""));
    }

    void uncacheableAnswerIsNotCached_data()
    {
        rows<int, FaultServer::Headers>({"status", "headers"},
                                        {{"no validator", 200, {"Cache-Control: max-age=60"}},
                                         {"no-store", 200, {"ETag: \"2\"", "Cache-Control: private, No-Store"}},
                                         {"not found", 404, {"ETag: \"2\""}},
                                         {"partial", 206, {"ETag: \"2\""}},
                                         {"no content", 204, {"ETag: \"2\""}},
                                         {"server error", 503, {"ETag: \"2\""}}});
    }
    void uncacheableAnswerIsNotCached()
    {
        QFETCH(int, status);
        QFETCH(FaultServer::Headers, headers);
        cacheAnswer();
        m_server->on("/", FaultServer::answer(status, "other", headers));
        QCOMPARE(get().status(), status);
        QCOMPARE(sent().value("if-none-match"), QByteArray("\"1\""));
        get();
        QVERIFY(sentNoValidator());
    }
    void cachedAnswerRemainsAfterTransportFailure()
    {
        cacheAnswer();
        m_server->on("/", FaultServer::sendAndClose("HTTP/1.1 200 OK\r\nETag: \"2\"\r\nContent-Length: 9\r\n\r\nhalf"));
        QVERIFY(get().failedWith(HttpFailure::Kind::Network));
        m_server->on("/", FaultServer::answer(304));
        QCOMPARE(get().body(), QByteArray("kept"));
    }

    void bypassNeitherUsesNorChangesCache()
    {
        cacheAnswer();
        m_server->on("/", FaultServer::answer(200, "probed", {"ETag: \"2\""}));
        QCOMPARE(getWith(HttpRequest::Cache::Bypass).body(), QByteArray("probed"));
        QVERIFY(sentNoValidator());
        m_server->on("/", FaultServer::answer(304));
        QCOMPARE(get().body(), QByteArray("kept"));
        QCOMPARE(sent().value("if-none-match"), QByteArray("\"1\""));
    }

    void unrequested304IsReturned_data()
    {
        using Cache = HttpRequest::Cache;
        rows<Cache>({"cache"}, {{"revalidate", Cache::Revalidate}, {"bypass", Cache::Bypass}});
    }
    void unrequested304IsReturned()
    {
        QFETCH(HttpRequest::Cache, cache);
        m_server->on("/", FaultServer::answer(304));
        const HttpOutcome outcome = getWith(cache);
        QCOMPARE(outcome.status(), 304);
        QCOMPARE(outcome.body(), QByteArray());
    }
    void urlsAreCachedSeparately()
    {
        for (const QByteArray page : {"1", "2"}) {
            m_server->on("/tapes", FaultServer::answer(200, "page " + page, {"ETag: \"" + page + "\""}));
            get("/tapes?page=" + page);
            QVERIFY(sentNoValidator());
        }
        m_server->on("/tapes", FaultServer::answer(304));
        QCOMPARE(get("/tapes?page=1").body(), QByteArray("page 1"));
        QCOMPARE(get("/tapes?page=2").body(), QByteArray("page 2"));
    }

    void redirectedAnswerIsNotCached()
    {
        m_server->on("/", FaultServer::redirect("/there"));
        m_server->on("/there", FaultServer::answer(200, "found", {"ETag: \"1\""}));
        get();
        get();
        QVERIFY(sentNoValidator());
    }

    void validatorIsNotSentToRedirectTarget()
    {
        cacheAnswer();
        m_server->on("/", FaultServer::redirect("/there"));
        m_server->on("/there", [](const FaultServer::Request& request) {
            const bool isConfirmed = request.headers.value("if-none-match") == "\"1\"";
            (isConfirmed ? FaultServer::answer(304) : FaultServer::answer(200, "found"))(request);
        });
        QCOMPARE(get().body(), QByteArray("found"));
    }

    void cacheIsLimitedToEightMebibytes()
    {
        constexpr int mebi = 1024 * 1024;
        for (int part = 0; part < 5; ++part) {
            const QByteArray path = "/" + QByteArray::number(part);
            m_server->on(path, FaultServer::answer(200, QByteArray(2 * mebi, 'b'), {"ETag: \"1\""}));
            get(path);
        }
        int kept = 0;
        for (int part = 4; part >= 0; --part) {
            const QByteArray path = "/" + QByteArray::number(part);
            get(path);
            kept += sentNoValidator() ? 0 : 1;
        }
        QCOMPARE(kept, 3);
    }

    void answerLargerThanCacheIsNotCached()
    {
        m_server->on("/", FaultServer::answer(200, QByteArray(9 * 1024 * 1024, 'b'), {"ETag: \"1\""}));
        get();
        get();
        QVERIFY(sentNoValidator());
    }
};

QUILLMERE_TEST(HttpRevalidationTest, QCoreApplication)

} // namespace quillmere

#include "HttpRevalidationTest.moc"
