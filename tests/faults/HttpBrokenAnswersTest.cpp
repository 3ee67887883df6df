#include "HttpServerFixture.h"
#include "TestMain.h"

#include <QTest>

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
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("before the head") << QByteArray();
        QTest::newRow("within the head") << QByteArray("HTTP/1.1 200 OK\r\nContent-");
        QTest::newRow("after the head") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n");
        QTest::newRow("within the body") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf");
        QTest::newRow("within a chunk") << QByteArray("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n9\r\nhalf");
        QTest::newRow("between chunks") << QByteArray(
            "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nhalf\r\n");
        QTest::newRow("within a gzip body")
            << QByteArray("HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 900\r\n\r\n") +
                   gzip(QByteArray(90'000, 'a')).left(100);
        QTest::newRow("not HTTP at all") << QByteArray("SSH-2.0-Something_1.0\r\n\r\nhello hello hello\r\n\r\n");
    }
    void brokenConnectionIsFailure()
    {
        QFETCH(QByteArray, sent);
        m_server->on("/", FaultServer::sendAndClose(sent));
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url()));
        QVERIFY(outcome.failedWith(Kind::Network));
        QVERIFY(!outcome.errorDescription().isEmpty());
    }

    void gzipBodyThatEndsEarlyIsFailure()
    {
        const QByteArray body = gzip(QByteArray(90'000, 'a')).left(100);
        m_server->on("/", FaultServer::answer(200, body, {"Content-Encoding: gzip"}));
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url()));
        QVERIFY(outcome.failedWith(Kind::Truncated));
        QCOMPARE(outcome.errorDescription(), QString());
    }

    void damagedGzipBodyIsFailure()
    {
        m_server->on("/", FaultServer::answer(200, "this is not gzip at all", {"Content-Encoding: gzip"}));
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url()));
        QVERIFY(outcome.failedWith(Kind::Unreadable));
        QCOMPARE(outcome.errorDescription(), QString());
    }

    void bodyWithoutLengthEndsWhenConnectionCloses()
    {
        m_server->on("/", FaultServer::sendAndClose("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\nall of it"));
        QCOMPARE(fetch(*m_client, requestTo(m_server->url())).body(), QByteArray("all of it"));
    }

    void gzipBodyIsDecompressed()
    {
        QByteArray text;
        for (int line = 0; line < 60'000; ++line)
            text += "line " + QByteArray::number(line * 7919) + "\n";
        m_server->on("/", FaultServer::answer(200, gzip(text), {"Content-Encoding: gzip"}));
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url()));
        QCOMPARE(outcome.body().size(), text.size());
        QVERIFY(outcome.body() == text);
    }

    void closedPortIsFailure()
    {
        const QUrl url = m_server->url();
        m_server.reset();
        const HttpOutcome outcome = fetch(*m_client, requestTo(url));
        QVERIFY(outcome.failedWith(Kind::Network));
        QCOMPARE(outcome.errorDescription(), u"Connection refused"_s);
    }
};

QUILLMERE_TEST(HttpBrokenAnswersTest, QCoreApplication)

} // namespace quillmere

#include "HttpBrokenAnswersTest.moc"
