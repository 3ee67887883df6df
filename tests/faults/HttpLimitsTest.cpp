#include "HttpServerFixture.h"
#include "TestMain.h"

#include <QElapsedTimer>
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
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("before the head") << QByteArray();
        QTest::newRow("within the head") << QByteArray("HTTP/1.1 200 OK\r\nContent-");
        QTest::newRow("within the body") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf");
    }
    void silentServerTimesOutAtInactivityLimit()
    {
        QFETCH(QByteArray, sent);
        m_server->on("/", FaultServer::sendAndWait(sent));
        HttpRequest request = requestTo(m_server->url());
        request.inactivityLimit = 300ms;
        QElapsedTimer timer;
        timer.start();
        const HttpOutcome outcome = fetch(*m_client, request);
        QVERIFY(outcome.failedWith(Kind::TimedOut));
        QCOMPARE(outcome.errorDescription(), QString());
        QVERIFY2(timer.elapsed() >= 290 && timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void incompleteHandshakeTimesOutAtInactivityLimit()
    {
        QTcpServer silentServer;
        QVERIFY(silentServer.listen(QHostAddress::LocalHost));
        HttpRequest request = requestTo(QUrl(u"https://localhost:%1/"_s.arg(silentServer.serverPort())));
        request.inactivityLimit = 300ms;
        QVERIFY(fetch(*m_client, request).failedWith(Kind::TimedOut));
    }

    void tricklingAnswerTimesOutAtOverallLimit()
    {
        m_server->on("/", FaultServer::trickle(100'000, 50));
        HttpRequest request = requestTo(m_server->url());
        request.inactivityLimit = 400ms;
        request.overallLimit = 1200ms;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(fetch(*m_client, request).failedWith(Kind::TimedOut));
        QVERIFY2(timer.elapsed() >= 1190 && timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void tricklingAnswerIsReceivedWithinOverallLimit()
    {
        m_server->on("/", FaultServer::trickle(10, 60));
        HttpRequest request = requestTo(m_server->url());
        request.inactivityLimit = 400ms;
        QCOMPARE(fetch(*m_client, request).body(), QByteArray(10, 'x'));
    }

    void answerDelayedWithinLimitsIsReceived()
    {
        m_server->on("/", [](const FaultServer::Request& request) {
            QTimer::singleShot(300, request.socket, [request] { FaultServer::answer(200, "late")(request); });
        });
        QCOMPARE(fetch(*m_client, requestTo(m_server->url())).body(), QByteArray("late"));
    }

    void queuedRequestTimesOutOrStartsWithinOverallLimit_data()
    {
        QTest::addColumn<int>("overall");
        QTest::addColumn<bool>("answered");
        QTest::newRow("too long") << 300 << false;
        QTest::newRow("long enough") << 5000 << true;
    }
    void queuedRequestTimesOutOrStartsWithinOverallLimit()
    {
        QFETCH(int, overall);
        QFETCH(bool, answered);
        m_server->on("/slow", FaultServer::sendAndWait());
        m_server->on("/", FaultServer::answer(200, "here"));
        QList<std::shared_ptr<HttpOutcome>> slow;
        for (int request = 0; request < 6; ++request) {
            HttpRequest slowRequest = requestTo(m_server->url("/slow"));
            slowRequest.overallLimit = 1s;
            slow.append(start(*m_client, slowRequest));
        }
        QTRY_COMPARE(m_server->requests().size(), 6);
        HttpRequest request = requestTo(m_server->url());
        // The time in the queue does not count as inactivity.
        request.inactivityLimit = 500ms;
        request.overallLimit = std::chrono::milliseconds(overall);
        const HttpOutcome outcome = fetch(*m_client, request);
        QCOMPARE(outcome.status() == 200, answered);
        QCOMPARE(outcome.failedWith(Kind::TimedOut), !answered);
        QCOMPARE(m_server->requests().size(), answered ? 7 : 6);
    }

    void bodyLimitIsExact_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("compressed");
        QTest::addColumn<bool>("fits");
        for (const bool compressed : {false, true}) {
            const char* const form = compressed ? "gzip" : "plain";
            QTest::addRow("%s, at the limit", form) << 300'000 << compressed << true;
            QTest::addRow("%s, one above", form) << 300'001 << compressed << false;
            QTest::addRow("%s, far above", form) << 3'000'000 << compressed << false;
        }
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
        QCOMPARE(fetch(*m_client, requestTo(m_server->url())).body().size(), 16 * 1024 * 1024);
    }

    void gzipBombIsRefusedWithoutUsingMemory()
    {
        constexpr qint64 mebi = 1024 * 1024;
        const QByteArray bomb = gzipBomb(200 * mebi);
        QVERIFY(bomb.size() < mebi);
        m_server->on("/", FaultServer::answer(200, bomb, {"Content-Encoding: gzip"}));
        const qint64 before = peakMemory();
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url()));
        const qint64 after = peakMemory();
        QVERIFY(outcome.failedWith(Kind::TooLarge));
        QVERIFY2(after - before < 64, qPrintable(u"%1 MiB more"_s.arg(after - before)));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }
};

QUILLMERE_TEST(HttpLimitsTest, QCoreApplication)

} // namespace quillmere

#include "HttpLimitsTest.moc"
