#include "HttpServerFixture.h"
#include "Rows.h"
#include "TestMain.h"

#include <QFile>
#include <QTcpServer>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

using Kind = HttpFailure::Kind;

namespace {

/** Peak resident memory of this process, in MiB. */
qint64 peakMemory()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong() / 1024;
    }
    return 0;
}

} // namespace

/** Limits of the duration and the size of an answer. */
class HttpLimitsTest : public HttpServerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void silentServerTimesOutAtInactivityLimit_data()
    {
        rows<QByteArray>({"sent"}, {{"before the head", ""},
                                    {"within the head", "HTTP/1.1 200 OK\r\nContent-"},
                                    {"within the body", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf"}});
    }
    void silentServerTimesOutAtInactivityLimit()
    {
        QFETCH(QByteArray, sent);
        m_server->on("/", FaultServer::sendAndWait(sent));
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url(), 300ms));
        QVERIFY(outcome.failedWith(Kind::TimedOut));
        QCOMPARE(outcome.errorDescription(), QString());
        QVERIFY2(outcome.milliseconds >= 290 && outcome.milliseconds < 3000, elapsed(outcome));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void incompleteHandshakeTimesOutAtInactivityLimit()
    {
        QTcpServer silentServer;
        QVERIFY(silentServer.listen(QHostAddress::LocalHost));
        const QUrl url(u"https://localhost:%1/"_s.arg(silentServer.serverPort()));
        QVERIFY(fetch(*m_client, requestTo(url, 300ms)).failedWith(Kind::TimedOut));
    }

    void tricklingAnswerTimesOutAtOverallLimit()
    {
        m_server->on("/", FaultServer::trickle(100'000, 50));
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url(), 400ms, 1200ms));
        QVERIFY(outcome.failedWith(Kind::TimedOut));
        QVERIFY2(outcome.milliseconds >= 1190 && outcome.milliseconds < 4000, elapsed(outcome));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void tricklingAnswerIsReceivedWithinOverallLimit()
    {
        m_server->on("/", FaultServer::trickle(10, 60));
        QCOMPARE(fetch(*m_client, requestTo(m_server->url(), 400ms)).body(), QByteArray(10, 'x'));
    }

    void answerDelayedWithinLimitsIsReceived()
    {
        m_server->on("/", [](const FaultServer::Request& request) {
            QTimer::singleShot(300, request.socket, [request] { FaultServer::answer(200, "late")(request); });
        });
        QCOMPARE(get().body(), QByteArray("late"));
    }

    void queuedRequestTimesOutOrStartsWithinOverallLimit_data()
    {
        rows<int, bool>({"overall", "answered"}, {{"too long", 300, false}, {"long enough", 5000, true}});
    }
    void queuedRequestTimesOutOrStartsWithinOverallLimit()
    {
        QFETCH(int, overall);
        QFETCH(bool, answered);
        m_server->on("/slow", FaultServer::sendAndWait());
        m_server->on("/", FaultServer::answer(200, "here"));
        for (int request = 0; request < 6; ++request)
            start(*m_client, requestTo(m_server->url("/slow"), 5s, 1s));
        QTRY_COMPARE(m_server->requests().size(), 6);
        // The time in the queue does not count as inactivity.
        const HttpOutcome outcome =
            fetch(*m_client, requestTo(m_server->url(), 500ms, std::chrono::milliseconds(overall)));
        QCOMPARE(outcome.status() == 200, answered);
        QCOMPARE(outcome.failedWith(Kind::TimedOut), !answered);
        QCOMPARE(m_server->requests().size(), answered ? 7 : 6);
    }
    void bodyLimitIsExact_data()
    {
        rows<int, bool, bool>({"size", "compressed", "fits"}, {{"plain, at the limit", 300'000, false, true},
                                                               {"plain, one above", 300'001, false, false},
                                                               {"plain, far above", 3'000'000, false, false},
                                                               {"gzip, at the limit", 300'000, true, true},
                                                               {"gzip, one above", 300'001, true, false},
                                                               {"gzip, far above", 3'000'000, true, false}});
    }
    void bodyLimitIsExact()
    {
        QFETCH(int, size);
        QFETCH(bool, compressed);
        const QByteArray body(size, 'b');
        m_server->on("/", compressed ? FaultServer::answer(200, gzip(body), {"Content-Encoding: gzip"})
                                     : FaultServer::answer(200, body));
        HttpRequest request = requestTo(m_server->url());
        request.maxBytes = 300'000;
        const HttpOutcome outcome = fetch(*m_client, request);
        QFETCH(bool, fits);
        QCOMPARE(outcome.body().size() == size, fits);
        QCOMPARE(outcome.failedWith(Kind::TooLarge), !fits);
        if (!fits)
            QCOMPARE(outcome.errorDescription(), QString());
    }
    void bodyOfMaximumSizeIsReceived()
    {
        m_server->on("/", FaultServer::answer(200, QByteArray(16 * 1024 * 1024, 'b')));
        QCOMPARE(get().body().size(), 16 * 1024 * 1024);
    }

    void gzipBombIsRefusedWithoutUsingMemory()
    {
        constexpr qint64 mebi = 1024 * 1024;
        const QByteArray bomb = gzipBomb(200 * mebi);
        QVERIFY(bomb.size() < mebi);
        m_server->on("/", FaultServer::answer(200, bomb, {"Content-Encoding: gzip"}));
        const qint64 before = peakMemory();
        const HttpOutcome outcome = get();
        const qint64 after = peakMemory();
        QVERIFY(outcome.failedWith(Kind::TooLarge));
        QVERIFY2(after - before < 64, qPrintable(u"%1 MiB more"_s.arg(after - before)));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

private:
    static QByteArray elapsed(const HttpOutcome& outcome) { return QByteArray::number(outcome.milliseconds); }
};

QUILLMERE_TEST(HttpLimitsTest, QCoreApplication)

} // namespace quillmere

#include "HttpLimitsTest.moc"
