#include "HubServerFixture.h"
#include "Rows.h"
#include "TestMain.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** Answers with a head and an endless body, and adds to `sent` the bytes that the network has accepted. */
void flood(const FaultServer::Request& request, const QByteArray& head, qint64& sent)
{
    request.socket->write(head);
    const auto writeMore = [socket = request.socket] {
        constexpr qint64 mebi = 1024 * 1024;
        if (socket && socket->bytesToWrite() + socket->encryptedBytesToWrite() < mebi)
            socket->write(QByteArray(mebi, 'x'));
    };
    QObject::connect(request.socket, &QSslSocket::encryptedBytesWritten, request.socket,
                     [&sent, writeMore](qint64 bytes) {
                         sent += bytes;
                         writeMore();
                     });
    writeMore();
}

} // namespace

/** The probe over a real network: it evaluates only the status. */
class HubProbeOverNetworkTest : public HubServerFixture
{
    Q_OBJECT

    bool probe() { return resultOf(m_hub->probe(u"/live/news/index.m3u8"_s)); }
    void serve(FaultServer::Handler handler) { m_server->on("/live/news/index.m3u8", std::move(handler)); }

private Q_SLOTS:
    void probeSucceedsForStatus200WithAnyBody_data()
    {
        const QByteArray ok = "HTTP/1.1 200 OK\r\n";
        const QByteArray longer = ok + "Content-Length: 9\r\n\r\n";
        rows<QByteArray, bool>(
            {"sent", "closes"},
            {{"whole", ok + "Content-Length: 7\r\n\r\n#EXTM3U", false},
             {"empty", ok + "Content-Length: 0\r\n\r\n", false},
             {"still arriving", longer + "#EXTM3U", false},
             {"not begun", longer, false},
             {"without end", ok + "\r\n#EXTM3U", false},
             {"cut short", longer + "#EXTM3U", true},
             {"damaged gzip", ok + "Content-Encoding: gzip\r\nContent-Length: 7\r\n\r\n#EXTM3U", false},
             {"larger than 4 MiB", ok + "Content-Length: 5000000\r\n\r\n" + QByteArray(5'000'000, 'x'), false},
             {"behind 103", "HTTP/1.1 103 Early Hints\r\n\r\n" + longer + "#EXT", false}});
    }
    void probeSucceedsForStatus200WithAnyBody()
    {
        QFETCH(QByteArray, sent);
        QFETCH(bool, closes);
        serve(closes ? FaultServer::sendAndClose(sent) : FaultServer::sendAndWait(sent));
        QElapsedTimer timer;
        timer.start();
        QVERIFY(probe());
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    }
    void probeFailsForOtherStatus_data()
    {
        QTest::addColumn<QByteArray>("sent");
        for (const QByteArray status : {"199", "201", "204", "206", "304", "404", "503"})
            QTest::newRow(status.constData()) << "HTTP/1.1 " + status + " Test\r\nContent-Length: 9\r\n\r\n#EXT";
        QTest::newRow("103 and 204") << QByteArray("HTTP/1.1 103 Hints\r\n\r\nHTTP/1.1 204 No Content\r\n\r\n");
        QTest::newRow("not HTTP") << QByteArray("200 OK\r\n\r\n");
    }
    void probeFailsForOtherStatus()
    {
        QFETCH(QByteArray, sent);
        serve(FaultServer::sendAndClose(sent));
        QVERIFY(!probe());
    }
    void probeFollowsRedirects_data()
    {
        rows<int, bool>({"status", "expected"}, {{"200", 200, true}, {"206", 206, false}, {"404", 404, false}});
    }
    void probeFollowsRedirects()
    {
        QFETCH(int, status);
        serve(FaultServer::redirect("/there"));
        m_server->on("/there", FaultServer::answer(status, "#EXTM3U\n#EXT-X-VERSION:3\n"));
        QTEST(probe(), "expected");
    }
    void endlessBodyIsAborted()
    {
        qint64 sent = 0;
        serve([&sent](const FaultServer::Request& request) { flood(request, "HTTP/1.1 200 OK\r\n\r\n", sent); });
        QVERIFY(probe());
        QTRY_COMPARE(m_server->openConnections(), 0);
        // The buffers of the network take some megabytes more than the client reads.
        QVERIFY2(sent < 32 * 1024 * 1024, qPrintable(QString::number(sent)));
    }

    void probeDoesNotWaitForMissingBody()
    {
        serve(FaultServer::sendAndWait("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n"));
        QVERIFY(probe());
        QTRY_COMPARE_WITH_TIMEOUT(m_server->openConnections(), 0, 4000);
    }

    void probesReuseConnection_data()
    {
        rows<int, int>({"status", "size"}, {{"a playlist", 200, 400},
                                            {"a longer one", 200, 40'000},
                                            {"an error page", 404, 10'000},
                                            {"an empty answer", 204, 0}});
    }
    void probesReuseConnection()
    {
        QFETCH(int, status);
        QFETCH(int, size);
        serve(FaultServer::answer(status, QByteArray(size, 'x')));
        for (int count = 0; count < 5; ++count) {
            QCOMPARE(probe(), status == 200);
            // A real probe comes seconds later, when the rest of the previous answer has arrived.
            QTest::qWait(200);
        }
        QVERIFY2(m_server->connections() <= 2, qPrintable(QString::number(m_server->connections())));
    }
};

QUILLMERE_TEST(HubProbeOverNetworkTest, QCoreApplication)

} // namespace quillmere

#include "HubProbeOverNetworkTest.moc"
