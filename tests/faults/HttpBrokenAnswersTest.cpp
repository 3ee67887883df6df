#include "HttpServerFixture.h"
#include "Rows.h"
#include "TestMain.h"

using namespace Qt::StringLiterals;

namespace quillmere {

using Kind = HttpFailure::Kind;

/** Answers that end too early or whose body does not match their headers. */
class HttpBrokenAnswersTest : public HttpServerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void brokenConnectionIsFailure_data()
    {
        const QByteArray ok = "HTTP/1.1 200 OK\r\n";
        const QByteArray chunked = ok + "Transfer-Encoding: chunked\r\n\r\n";
        rows<QByteArray>({"sent"}, {{"before the head", ""},
                                    {"within the head", ok + "Content-"},
                                    {"after the head", ok + "Content-Length: 9\r\n\r\n"},
                                    {"within the body", ok + "Content-Length: 9\r\n\r\nhalf"},
                                    {"within a chunk", chunked + "9\r\nhalf"},
                                    {"between chunks", chunked + "4\r\nhalf\r\n"},
                                    {"within a gzip body",
                                     ok + "Content-Encoding: gzip\r\nContent-Length: 900\r\n\r\n" + halfOfGzip()},
                                    {"not HTTP at all", "SSH-2.0-Something_1.0\r\n\r\nhello hello hello\r\n\r\n"}});
    }
    void brokenConnectionIsFailure()
    {
        QFETCH(QByteArray, sent);
        m_server->on("/", FaultServer::sendAndClose(sent));
        const HttpOutcome outcome = get();
        QVERIFY(outcome.failedWith(Kind::Network));
        QVERIFY(!outcome.errorDescription().isEmpty());
    }

    void brokenGzipBodyIsFailure_data()
    {
        rows<QByteArray, Kind>({"body", "failure"}, {{"ends early", halfOfGzip(), Kind::Truncated},
                                                     {"damaged", "this is not gzip at all", Kind::Unreadable}});
    }
    void brokenGzipBodyIsFailure()
    {
        QFETCH(QByteArray, body);
        QFETCH(Kind, failure);
        m_server->on("/", FaultServer::answer(200, body, {"Content-Encoding: gzip"}));
        const HttpOutcome outcome = get();
        QVERIFY(outcome.failedWith(failure));
        QCOMPARE(outcome.errorDescription(), QString());
    }

    void bodyWithoutLengthEndsWhenConnectionCloses()
    {
        m_server->on("/", FaultServer::sendAndClose("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\nall of it"));
        QCOMPARE(get().body(), QByteArray("all of it"));
    }

    void gzipBodyIsDecompressed()
    {
        QByteArray text;
        for (int line = 0; line < 60'000; ++line)
            text += "line " + QByteArray::number(line * 7919) + "\n";
        m_server->on("/", FaultServer::answer(200, gzip(text), {"Content-Encoding: gzip"}));
        QVERIFY(get().body() == text);
    }

    void closedPortIsFailure()
    {
        const QUrl url = m_server->url();
        m_server.reset();
        const HttpOutcome outcome = fetch(*m_client, requestTo(url));
        QVERIFY(outcome.failedWith(Kind::Network));
        QCOMPARE(outcome.errorDescription(), u"Connection refused"_s);
    }

private:
    static QByteArray halfOfGzip() { return gzip(QByteArray(90'000, 'a')).left(100); }
};

QUILLMERE_TEST(HttpBrokenAnswersTest, QCoreApplication)

} // namespace quillmere

#include "HttpBrokenAnswersTest.moc"
