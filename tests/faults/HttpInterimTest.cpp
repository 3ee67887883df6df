#include "HttpServerFixture.h"
#include "Rows.h"
#include "TaskScope.h"
#include "TestMain.h"

using namespace std::chrono_literals;

namespace quillmere {

using Kind = HttpFailure::Kind;

namespace {

using Pieces = QList<QByteArray>;

/** A final answer whose body is the request target. */
QByteArray answerTo(const QByteArray& target)
{
    return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(target.size()) + "\r\n\r\n" + target;
}

/** Answers each request with these pieces and the final answer, `interval` ms apart; 0 sends all in one segment. */
FaultServer::Handler interim(const Pieces& before, int interval)
{
    return [before, interval](const FaultServer::Request& request) {
        const Pieces pieces = before + Pieces{answerTo(request.target)};
        FaultServer::sendInPieces(interval > 0 ? pieces : Pieces{pieces.join()}, interval)(request);
    };
}

const QByteArray earlyHints = "HTTP/1.1 103 Early Hints\r\nLink: </a.css>; rel=preload\r\n\r\n";

} // namespace

/** Interim statuses, from 100 to 199, which are followed by the final answer. */
class HttpInterimTest : public HttpServerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void interimStatusIsSkipped_data()
    {
        QTest::addColumn<Pieces>("before");
        QTest::addColumn<QByteArray>("certificate");
        QTest::addColumn<int>("interval");
        const QByteArray length = "HTTP/1.1 102 Processing\r\nContent-Length: 5\r\nTransfer-Encoding: chunked\r\n\r\n";
        const QList<QPair<const char*, Pieces>> cases{
            {"100", {"HTTP/1.1 100 Continue\r\n\r\n"}},
            {"101", {"HTTP/1.1 101 Switching Protocols\r\nUpgrade: h2c\r\nConnection: Upgrade\r\n\r\n"}},
            {"102", {"HTTP/1.1 102 Processing\r\n\r\n"}},
            {"103", {earlyHints}},
            {"104", {"HTTP/1.1 104 Upload Resumption\r\n\r\n"}},
            {"199", {"HTTP/1.1 199 Odd\r\n\r\n"}},
            {"102 with a length", {length}},
            {"103 that closes", {"HTTP/1.1 103 Early Hints\r\nConnection: close\r\n\r\n"}},
            {"102, 102, 100, 103", {length, length, "HTTP/1.1 100 Continue\r\n\r\n", earlyHints}},
            {"103 in two segments", {earlyHints.first(20), earlyHints.mid(20)}},
            {"103 up to its blank line", {earlyHints.chopped(2), "\r\n"}},
            {"103 with bare line feeds", {"HTTP/1.1 103 Early Hints\nLink: <a>\n\n"}},
        };
        for (const auto& [name, before] : cases) {
            for (const QByteArray certificate : {"good", ""}) {
                for (const int interval : {0, 40}) {
                    QTest::addRow("%s, %s, %s", name, certificate.isEmpty() ? "plain" : "TLS",
                                  interval == 0 ? "one segment" : "several segments")
                        << before << certificate << interval;
                }
            }
        }
    }
    void interimStatusIsSkipped()
    {
        QFETCH(Pieces, before);
        QFETCH(QByteArray, certificate);
        QFETCH(int, interval);
        FaultServer server(certificate);
        for (const QByteArray path : {"/1", "/2", "/3"}) {
            server.on(path, interim(before, interval));
            const HttpOutcome outcome = fetch(*m_client, requestTo(server.url(path)));
            QCOMPARE(outcome.status(), 200);
            QCOMPARE(outcome.body(), path);
        }
    }
    void interimStatusDoesNotShiftLaterAnswers_data()
    {
        rows<int>({"interval"}, {{"at once", 0}, {"soon after", 40}, {"late", 1500}});
    }
    void interimStatusDoesNotShiftLaterAnswers()
    {
        QFETCH(int, interval);
        m_server->on("/1", interim({earlyHints}, interval));
        for (const QByteArray path : {"/1", "/2", "/3", "/4"}) {
            if (path != "/1")
                m_server->on(path, interim({}, 0));
            const HttpOutcome outcome = get(path);
            QCOMPARE(outcome.status(), 200);
            QCOMPARE(outcome.body(), path);
        }
    }
    void overlappingRequestsGetOwnAnswers_data()
    {
        QTest::addColumn<int>("every");
        QTest::addColumn<int>("interval");
        for (const int every : {1, 3}) {
            for (const int interval : {0, 20, 150})
                QTest::addRow("every %d, %d ms", every, interval) << every << interval;
        }
    }
    void overlappingRequestsGetOwnAnswers()
    {
        QFETCH(int, every);
        QFETCH(int, interval);
        QList<std::shared_ptr<HttpOutcome>> outcomes;
        for (int request = 0; request < 24; ++request) {
            const QByteArray path = "/" + QByteArray::number(request);
            m_server->on(path, interim(request % every == 0 ? Pieces{earlyHints, earlyHints} : Pieces{}, interval));
            outcomes.append(start(*m_client, requestTo(m_server->url(path))));
        }
        for (int request = 0; request < outcomes.size(); ++request) {
            QTRY_VERIFY_WITH_TIMEOUT(outcomes.at(request)->result, 20000);
            QCOMPARE(outcomes.at(request)->body(), "/" + QByteArray::number(request));
        }
    }
    void cancelledRequestLeavesNoAnswerForNextRequest()
    {
        m_server->on("/old", interim({earlyHints}, 60));
        m_server->on("/new", interim({}, 0));
        for (int delay = 0; delay < 80; delay += 2) {
            TaskScope scope;
            const auto old = start(*m_client, requestTo(m_server->url("/old")), scope.token());
            QTest::qWait(delay);
            scope.cancel();
            QCOMPARE(get("/new").body(), QByteArray("/new"));
        }
    }

    void connectionWithInterimStatusIsNotReused()
    {
        m_server->on("/", interim({earlyHints}, 40));
        QCOMPARE(get().body(), QByteArray("/"));
        const int requestCount = int(m_server->requests().size());
        QVERIFY2(requestCount <= 2, "the request was repeated more than once");
        QCOMPARE(m_server->connections(), requestCount);
        // The client now knows this server and sends each request once.
        QCOMPARE(get().body(), QByteArray("/"));
        QCOMPARE(m_server->requests().size(), requestCount + 1);
    }

    void serversWithInterimStatusAreKnownAtTheSameTime()
    {
        FaultServer other("good");
        const auto fetchFrom = [this](FaultServer& server) {
            const auto before = server.requests().size();
            const bool isComplete = fetch(*m_client, requestTo(server.url())).body() == "/";
            return isComplete ? server.requests().size() - before : 0;
        };
        for (FaultServer* const server : {&*m_server, &other}) {
            server->on("/", interim({"HTTP/1.1 101 Switching Protocols\r\n\r\n"}, 40));
            QVERIFY(fetchFrom(*server) > 0);
        }
        QCOMPARE(fetchFrom(*m_server), 1);
        QCOMPARE(fetchFrom(other), 1);
    }

    void interimStatusWithoutFinalAnswerIsReturned_data()
    {
        const QByteArray switching = "HTTP/1.1 101 Switching Protocols\r\n\r\n";
        rows<QByteArray, int>({"sent", "status"},
                              {{"199", "HTTP/1.1 199 Odd\r\nContent-Length: 0\r\n\r\n", 199},
                               {"103", earlyHints, 103},
                               {"101", switching, 101},
                               {"103, then half a head", earlyHints + "HTTP/1.1 200 OK\r\nContent-", 103},
                               {"101, then another protocol", switching + QByteArray(18, '\x01'), 101}});
    }
    void interimStatusWithoutFinalAnswerIsReturned()
    {
        QFETCH(QByteArray, sent);
        m_server->on("/", FaultServer::sendAndClose(sent));
        m_server->on("/next", interim({}, 0));
        QTEST(get().status(), "status");
        QCOMPARE(get("/next").body(), QByteArray("/next"));
    }
    void truncatedAnswerAfterInterimStatusIsFailure()
    {
        m_server->on("/", FaultServer::sendAndClose(earlyHints + answerTo("/").chopped(1)));
        QVERIFY(get().failedWith(Kind::Network));
    }

    void silenceAfterInterimStatusTimesOut()
    {
        m_server->on("/", FaultServer::sendAndWait(earlyHints));
        QVERIFY(fetch(*m_client, requestTo(m_server->url(), 300ms)).failedWith(Kind::TimedOut));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void endlessInterimStatusesTimeOut()
    {
        m_server->on("/", FaultServer::sendInPieces(Pieces(200, earlyHints), 20));
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url(), 5s, 1s));
        QVERIFY(outcome.failedWith(Kind::TimedOut));
        QVERIFY(outcome.milliseconds < 3000);
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void answerAfterInterimStatusIsParsed_data()
    {
        const QByteArray ok = "HTTP/1.1 200 OK\r\n";
        const QByteArray packed = gzip("packed");
        const QByteArray length = QByteArray::number(packed.size());
        rows<QByteArray, int, QByteArray>(
            {"answer", "status", "body"},
            {{"gzip", ok + "Content-Encoding: gzip\r\nContent-Length: " + length + "\r\n\r\n" + packed, 200, "packed"},
             {"chunks",
              ok + "Transfer-Encoding: chunked\r\n\r\n3;x=y\r\nin \r\n5\r\nparts\r\n0\r\nX-Trailer: yes\r\n\r\n", 200,
              "in parts"},
             {"to the close", ok + "Connection: close\r\n\r\nall of it", 200, "all of it"},
             {"no content", "HTTP/1.1 204 No Content\r\n\r\n", 204, ""},
             {"not found", "HTTP/1.1 404 Not Found\r\nContent-Length: 2\r\n\r\nno", 404, ""},
             {"HTTP/1.0", "HTTP/1.0 200 OK\r\n\r\nold", 200, "old"}});
    }
    void answerAfterInterimStatusIsParsed()
    {
        QFETCH(QByteArray, answer);
        m_server->on("/", FaultServer::sendAndClose(earlyHints + answer));
        const HttpOutcome outcome = get("/?q=%20a");
        QTEST(outcome.status(), "status");
        QTEST(outcome.body(), "body");
        QCOMPARE(m_server->requests().last().target, QByteArray("/?q=%20a"));
        QCOMPARE(m_server->requests().last().headers.value("host"),
                 "localhost:" + QByteArray::number(m_server->serverPort()));
    }
    void largeBodyAfterInterimStatusIsComplete()
    {
        QByteArray body;
        for (int line = 0; line < 400'000; ++line)
            body += QByteArray::number(line) + '\n';
        m_server->on("/", FaultServer::sendAndWait(earlyHints + "HTTP/1.1 200 OK\r\nContent-Length: " +
                                                   QByteArray::number(body.size()) + "\r\n\r\n" + body));
        QVERIFY(get().body() == body);
        HttpRequest request = requestTo(m_server->url());
        request.maxBytes = body.size() - 1;
        QVERIFY(fetch(*m_client, request).failedWith(Kind::TooLarge));
    }

    void redirectAfterInterimStatusIsFollowed()
    {
        m_server->on("/", FaultServer::sendAndWait(
                              earlyHints + "HTTP/1.1 302 Found\r\nLocation: /there\r\nContent-Length: 0\r\n\r\n"));
        m_server->on("/there", interim({earlyHints}, 30));
        QCOMPARE(get().body(), QByteArray("/there"));
    }

    void cachedAnswerIsRevalidatedAfterInterimStatus()
    {
        m_server->on("/", FaultServer::sendAndWait(earlyHints +
                                                   "HTTP/1.1 200 OK\r\nETag: \"1\"\r\nContent-Length: 4\r\n\r\nkept"));
        QCOMPARE(get().body(), QByteArray("kept"));
        m_server->on("/", FaultServer::sendAndWait(earlyHints + "HTTP/1.1 304 Not Modified\r\n\r\n"));
        QCOMPARE(get().body(), QByteArray("kept"));
        QCOMPARE(m_server->requests().last().headers.value("if-none-match"), QByteArray("\"1\""));
    }

    void badCertificateIsRefusedAfterInterimStatus()
    {
        // No QNetworkAccessManager skips status 101, so the next request uses a new connection.
        m_server->on("/", interim({"HTTP/1.1 101 Switching Protocols\r\n\r\n"}, 30));
        QCOMPARE(get().body(), QByteArray("/"));
        const auto requestCount = m_server->requests().size();
        m_server->setCertificate("unknown-issuer");
        QVERIFY(get().failedWith(Kind::Network));
        QCOMPARE(m_server->requests().size(), requestCount);
    }
};

QUILLMERE_TEST(HttpInterimTest, QCoreApplication)

} // namespace quillmere

#include "HttpInterimTest.moc"
