#include "HubServerFixture.h"
#include "Rows.h"
#include "TestMain.h"

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

QByteArray head(int status, const QByteArray& headers)
{
    return "HTTP/1.1 " + QByteArray::number(status) + " Test\r\n" + headers + "\r\n";
}

QByteArray contentLength(qsizetype bytes)
{
    return "Content-Length: " + QByteArray::number(bytes) + "\r\n";
}

} // namespace

/** Error texts that the hub client derives from answers over a real network. */
class HubAnswersOverNetworkTest : public HubServerFixture
{
    Q_OBJECT

    void serve(FaultServer::Handler handler) { m_server->on("/api/tv/tape/7", std::move(handler)); }

private Q_SLOTS:
    void errorStatusIsReportedRegardlessOfBody_data()
    {
        const QByteArray gzipped = "Content-Encoding: gzip\r\n";
        const QByteArray damaged = "this is not gzip";
        const QByteArray half = gzip(QByteArray(90'000, 'a')).left(100);
        const QByteArray bomb = gzipBomb(40 * 1024 * 1024);
        const QByteArray large(17 * 1024 * 1024, 'x');
        rows<QByteArray, QByteArray, bool>({"headers", "body", "closes"},
                                           {{"no body", contentLength(0), "", false},
                                            {"damaged gzip", gzipped + contentLength(damaged.size()), damaged, false},
                                            {"truncated gzip", gzipped + contentLength(half.size()), half, false},
                                            {"a gzip bomb", gzipped + contentLength(bomb.size()), bomb, false},
                                            {"too large", contentLength(large.size()), large, false},
                                            {"cut short", contentLength(9), "half", true},
                                            {"silent", contentLength(9), "", false},
                                            {"without end", "", "half", false},
                                            {"chunks cut short", "Transfer-Encoding: chunked\r\n", "9\r\nhalf", true}});
    }
    void errorStatusIsReportedRegardlessOfBody()
    {
        QFETCH(QByteArray, headers);
        QFETCH(QByteArray, body);
        QFETCH(bool, closes);
        for (const int status : {404, 503, 300}) {
            const QByteArray bytes = head(status, headers) + body;
            serve(closes ? FaultServer::sendAndClose(bytes) : FaultServer::sendAndWait(bytes));
            QCOMPARE(errorText(7), u"The hub answered %1."_s.arg(status));
        }
    }

    void brokenBodyOfSuccessIsFailure_data()
    {
        const QString unreadable = u"The hub sent something this app couldn't read."_s;
        const QString cutShort = u"The hub's answer was cut short."_s;
        const QByteArray half = gzip("{\"id\":7,\"title\":\"Council\"}").chopped(4);
        rows<QByteArray, QByteArray, QString>({"coding", "body", "expected"},
                                              {{"damaged gzip", "gzip", "{\"id\":7}", unreadable},
                                               {"truncated gzip", "x-gzip", half, cutShort},
                                               {"another coding", "br", "\x8b\x03\x80{}\x03", unreadable},
                                               {"gzip twice", "gzip, gzip", gzip(gzip("{\"id\":7}")), unreadable}});
    }
    void brokenBodyOfSuccessIsFailure()
    {
        QFETCH(QByteArray, coding);
        QFETCH(QByteArray, body);
        const QByteArray headers = "Content-Encoding: " + coding + "\r\n" + contentLength(body.size());
        serve(FaultServer::sendAndWait(head(200, headers) + body));
        QTEST(errorText(7), "expected");
    }

    void compressedBodyIsDecompressed_data()
    {
        const QByteArray record = "{\"id\":7}";
        const QByteArray compressed = gzip(record);
        rows<QByteArray, QByteArray>({"coding", "body"},
                                     {{"gzip", "gzip", compressed},
                                      {"x-gzip", "x-gzip", compressed},
                                      {"mixed case", "GZip", compressed},
                                      {"X-GZIP with blanks", "  X-GZIP\t ", compressed},
                                      {"gzip and identity", "identity, gzip", compressed},
                                      {"two members", "gzip", gzip("{\"id\"") + gzip(":7}")},
                                      {"followed by zeros", "gzip", compressed + QByteArray(100, '\0')},
                                      {"followed by text", "gzip", compressed + "\r\nserved by 7"},
                                      {"identity", "identity", record},
                                      {"empty", "", record},
                                      {"a character set", "utf-8", record}});
    }
    void compressedBodyIsDecompressed()
    {
        QFETCH(QByteArray, coding);
        QFETCH(QByteArray, body);
        serve(FaultServer::answer(200, body, {"Content-Encoding: " + coding}));
        QCOMPARE(errorText(7), QString());
    }

    void interimStatusAloneIsReported()
    {
        serve(FaultServer::sendAndClose("HTTP/1.1 199 Odd\r\nContent-Length: 0\r\n\r\n"));
        QCOMPARE(errorText(7), u"The hub answered 199."_s);
    }

    void tapesGetOwnRecordsAfterInterimStatus()
    {
        for (int id = 1; id <= 4; ++id) {
            const QByteArray record = "{\"id\":" + QByteArray::number(id) + "}";
            const QByteArray answer = head(200, contentLength(record.size())) + record;
            const QByteArray hints = id == 1 ? head(103, "Link: </a>; rel=preload\r\n") : QByteArray();
            m_server->on("/api/tv/tape/" + QByteArray::number(id), FaultServer::sendInPieces({hints, answer}, 50));
        }
        for (int id = 1; id <= 4; ++id) {
            const HubResult<Tape> tape = resultOf(m_hub->tape(id));
            QVERIFY(tape);
            QCOMPARE(tape->id, id);
        }
    }

    void connectionIsReusedAfterSmallErrorAnswer()
    {
        serve(FaultServer::answer(503, "<html>Back soon</html>"));
        for (int count = 0; count < 5; ++count) {
            QCOMPARE(errorText(7), u"The hub answered 503."_s);
            // A real retry comes seconds later.
            QTest::qWait(200);
        }
        QVERIFY2(m_server->connections() <= 2, qPrintable(QString::number(m_server->connections())));
    }
};

QUILLMERE_TEST(HubAnswersOverNetworkTest, QCoreApplication)

} // namespace quillmere

#include "HubAnswersOverNetworkTest.moc"
