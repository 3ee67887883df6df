#include "HubServerFixture.h"
#include "TestMain.h"

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

const QString unreadable = u"The hub sent something this app couldn't read."_s;
const QString cutShort = u"The hub's answer was cut short."_s;

QByteArray head(int status, const QByteArray& headers)
{
    return "HTTP/1.1 " + QByteArray::number(status) + " Test\r\n" + headers + "\r\n";
}

} // namespace

/** Error texts that the hub client derives from answers over a real network. */
class HubAnswersOverNetworkTest : public HubServerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void errorStatusIsReportedRegardlessOfBody_data()
    {
        QTest::addColumn<QByteArray>("headers");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<bool>("closes");
        const auto row = [](const char* name, const QByteArray& headers, const QByteArray& body, bool closes) {
            QTest::newRow(name) << headers << body << closes;
        };
        const QByteArray damaged = "this is not gzip";
        const QByteArray half = gzip(QByteArray(90'000, 'a')).left(100);
        const QByteArray bomb = gzipBomb(40 * 1024 * 1024);
        const auto length = [](qsizetype bytes) { return "Content-Length: " + QByteArray::number(bytes) + "\r\n"; };
        row("no body", length(0), "", false);
        row("damaged gzip", "Content-Encoding: gzip\r\n" + length(damaged.size()), damaged, false);
        row("truncated gzip", "Content-Encoding: gzip\r\n" + length(half.size()), half, false);
        row("a gzip bomb", "Content-Encoding: gzip\r\n" + length(bomb.size()), bomb, false);
        row("too large", length(17 * 1024 * 1024), QByteArray(17 * 1024 * 1024, 'x'), false);
        row("cut short", length(9), "half", true);
        row("silent", length(9), "", false);
        row("without end", "", "half", false);
        row("chunks cut short", "Transfer-Encoding: chunked\r\n", "9\r\nhalf", true);
    }
    void errorStatusIsReportedRegardlessOfBody()
    {
        QFETCH(QByteArray, headers);
        QFETCH(QByteArray, body);
        QFETCH(bool, closes);
        for (const int status : {404, 503, 300}) {
            const QByteArray bytes = head(status, headers) + body;
            m_server->on("/api/tv/tape/7", closes ? FaultServer::sendAndClose(bytes) : FaultServer::sendAndWait(bytes));
            QCOMPARE(errorText(7), u"The hub answered %1."_s.arg(status));
        }
    }

    void brokenBodyOfSuccessIsFailure_data()
    {
        QTest::addColumn<QByteArray>("headers");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("expected");
        const QByteArray half = gzip("{\"id\":7,\"title\":\"Council\"}").chopped(4);
        QTest::newRow("damaged gzip") << QByteArray("Content-Encoding: gzip\r\n") << QByteArray("{\"id\":7}")
                                      << unreadable;
        QTest::newRow("truncated gzip") << QByteArray("Content-Encoding: x-gzip\r\n") << half << cutShort;
        QTest::newRow("another coding") << QByteArray("Content-Encoding: br\r\n") << QByteArray("\x8b\x03\x80{}\x03")
                                        << unreadable;
        QTest::newRow("gzip twice") << QByteArray("Content-Encoding: gzip, gzip\r\n") << gzip(gzip("{\"id\":7}"))
                                    << unreadable;
    }
    void brokenBodyOfSuccessIsFailure()
    {
        QFETCH(QByteArray, headers);
        QFETCH(QByteArray, body);
        m_server->on("/api/tv/tape/7",
                     FaultServer::sendAndWait(
                         head(200, headers + "Content-Length: " + QByteArray::number(body.size()) + "\r\n") + body));
        QTEST(errorText(7), "expected");
    }

    void compressedBodyIsDecompressed_data()
    {
        QTest::addColumn<QByteArray>("coding");
        QTest::addColumn<QByteArray>("body");
        const QByteArray record = "{\"id\":7}";
        const QByteArray compressed = gzip(record);
        QTest::newRow("gzip") << QByteArray("gzip") << compressed;
        QTest::newRow("x-gzip") << QByteArray("x-gzip") << compressed;
        QTest::newRow("mixed case") << QByteArray("GZip") << compressed;
        QTest::newRow("X-GZIP with blanks") << QByteArray("  X-GZIP\t ") << compressed;
        QTest::newRow("gzip and identity") << QByteArray("identity, gzip") << compressed;
        QTest::newRow("two members") << QByteArray("gzip") << gzip("{\"id\"") + gzip(":7}");
        QTest::newRow("followed by zeros") << QByteArray("gzip") << compressed + QByteArray(100, '\0');
        QTest::newRow("followed by text") << QByteArray("gzip") << compressed + "\r\nserved by 7";
        QTest::newRow("identity") << QByteArray("identity") << record;
        QTest::newRow("empty") << QByteArray() << record;
        QTest::newRow("a character set") << QByteArray("utf-8") << record;
    }
    void compressedBodyIsDecompressed()
    {
        QFETCH(QByteArray, coding);
        QFETCH(QByteArray, body);
        m_server->on("/api/tv/tape/7", FaultServer::answer(200, body, {"Content-Encoding: " + coding}));
        QCOMPARE(errorText(7), QString());
    }

    void interimStatusAloneIsReported()
    {
        m_server->on("/api/tv/tape/7", FaultServer::sendAndClose("HTTP/1.1 199 Odd\r\nContent-Length: 0\r\n\r\n"));
        QCOMPARE(errorText(7), u"The hub answered 199."_s);
    }

    void tapesGetOwnRecordsAfterInterimStatus()
    {
        for (int id = 1; id <= 4; ++id) {
            const QByteArray record = "{\"id\":" + QByteArray::number(id) + "}";
            const QByteArray answer =
                head(200, "Content-Length: " + QByteArray::number(record.size()) + "\r\n") + record;
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
        m_server->on("/api/tv/tape/7", FaultServer::answer(503, "<html>Back soon</html>"));
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
