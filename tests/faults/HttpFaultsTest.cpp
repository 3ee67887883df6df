#include "FaultServer.h"
#include "HttpOutcome.h"
#include "QtHttpClient.h"
#include "ScriptedConnectivity.h"
#include "TaskScope.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Kind = HttpFailure::Kind;

namespace {

/** The most memory that this process ever held, in MiB. */
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

QTemporaryDir& home()
{
    static QTemporaryDir folder;
    return folder;
}

} // namespace

class HttpFaultsTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<FaultServer> m_server;
    std::unique_ptr<QtHttpClient> m_client;

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<FaultServer>();
        m_client = std::make_unique<QtHttpClient>(FaultServer::issuer(), std::make_unique<ScriptedConnectivity>(true));
    }

    void cleanup()
    {
        m_client.reset();
        m_server.reset();
    }

    void silenceEndsAtTheInactivityLimit_data()
    {
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("before the head") << QByteArray();
        QTest::newRow("within the head") << QByteArray("HTTP/1.1 200 OK\r\nContent-");
        QTest::newRow("within the body") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf");
    }
    void silenceEndsAtTheInactivityLimit()
    {
        QFETCH(QByteArray, sent);
        m_server->on("/", FaultServer::sendAndWait(sent));
        HttpRequest request = to(m_server->url());
        request.inactivityLimit = 300ms;
        QElapsedTimer timer;
        timer.start();
        const HttpOutcome outcome = fetch(*m_client, request);
        QVERIFY(outcome.failedAs(Kind::TimedOut));
        QCOMPARE(outcome.words(), QString());
        QVERIFY2(timer.elapsed() >= 290 && timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void aServerThatNeverFinishesTheHandshakeEndsAtTheInactivityLimit()
    {
        QTcpServer mute;
        QVERIFY(mute.listen(QHostAddress::LocalHost));
        HttpRequest request = to(QUrl(u"https://localhost:%1/"_s.arg(mute.serverPort())));
        request.inactivityLimit = 300ms;
        QVERIFY(fetch(*m_client, request).failedAs(Kind::TimedOut));
    }

    void aByteNowAndThenEndsAtTheOverallLimit()
    {
        m_server->on("/", FaultServer::trickle(100'000, 50));
        HttpRequest request = to(m_server->url());
        request.inactivityLimit = 400ms;
        request.overallLimit = 1200ms;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(fetch(*m_client, request).failedAs(Kind::TimedOut));
        QVERIFY2(timer.elapsed() >= 1190 && timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void aByteNowAndThenThatComesToItsEndIsAnAnswer()
    {
        m_server->on("/", FaultServer::trickle(10, 60));
        HttpRequest request = to(m_server->url());
        request.inactivityLimit = 400ms;
        QCOMPARE(fetch(*m_client, request).body(), QByteArray(10, 'x'));
    }

    void aDelayWithinTheLimitsIsWaitedFor()
    {
        m_server->on("/", [](const FaultServer::Request& request) {
            QTimer::singleShot(300, request.socket, [request] { FaultServer::answer(200, "late")(request); });
        });
        QCOMPARE(fetch(*m_client, to(m_server->url())).body(), QByteArray("late"));
    }

    void aBrokenConnectionIsAFailure_data()
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
    void aBrokenConnectionIsAFailure()
    {
        QFETCH(QByteArray, sent);
        m_server->on("/", FaultServer::sendAndClose(sent));
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url()));
        qInfo() << outcome.words();
        QVERIFY(outcome.failedAs(Kind::Network));
    }

    void aGzipBodyThatIsWholeByItsLengthButCutShortInsideIsAFailure()
    {
        const QByteArray body = gzip(QByteArray(90'000, 'a')).left(100);
        m_server->on("/", FaultServer::answer(200, body, {"Content-Encoding: gzip"}));
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url()));
        qInfo() << outcome.words() << outcome.status() << outcome.body().size();
        QVERIFY(outcome.failedAs(Kind::CutShort));
    }

    void aDamagedGzipBodyIsAFailure()
    {
        m_server->on("/", FaultServer::answer(200, "this is not gzip at all", {"Content-Encoding: gzip"}));
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url()));
        qInfo() << outcome.words();
        QVERIFY(outcome.failedAs(Kind::Unreadable));
    }

    void aBodyUpToTheCloseIsAnAnswer()
    {
        m_server->on("/", FaultServer::sendAndClose("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\nall of it"));
        QCOMPARE(fetch(*m_client, to(m_server->url())).body(), QByteArray("all of it"));
    }

    void aGzipBodyIsUnpacked()
    {
        QByteArray text;
        for (int line = 0; line < 60'000; ++line)
            text += "line " + QByteArray::number(line * 7919) + "\n";
        m_server->on("/", FaultServer::answer(200, gzip(text), {"Content-Encoding: gzip"}));
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url()));
        QCOMPARE(outcome.body().size(), text.size());
        QVERIFY(outcome.body() == text);
    }

    void aClosedPortIsRefused()
    {
        const QUrl url = m_server->url();
        m_server.reset();
        const HttpOutcome outcome = fetch(*m_client, to(url));
        QVERIFY(outcome.failedAs(Kind::Network));
        QCOMPARE(outcome.words(), u"Connection refused"_s);
    }

    void theLimitOfTheBodyIsExact_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("packed");
        QTest::addColumn<bool>("fits");
        for (const bool packed : {false, true}) {
            const char* const form = packed ? "gzip" : "plain";
            QTest::addRow("%s, at the limit", form) << 300'000 << packed << true;
            QTest::addRow("%s, one above", form) << 300'001 << packed << false;
            QTest::addRow("%s, far above", form) << 3'000'000 << packed << false;
        }
    }
    void theLimitOfTheBodyIsExact()
    {
        QFETCH(int, size);
        QFETCH(bool, packed);
        const QByteArray body(size, 'b');
        m_server->on("/", packed ? FaultServer::answer(200, gzip(body), {"Content-Encoding: gzip"})
                                 : FaultServer::answer(200, body));
        HttpRequest request = to(m_server->url());
        request.maxBytes = 300'000;
        const HttpOutcome outcome = fetch(*m_client, request);
        QFETCH(bool, fits);
        QCOMPARE(outcome.body().size() == size, fits);
        QCOMPARE(outcome.failedAs(Kind::TooLarge), !fits);
        if (!fits)
            QCOMPARE(outcome.words(), QString());
    }

    void aBodyOfTheFullSizeFits()
    {
        m_server->on("/", FaultServer::answer(200, QByteArray(16 * 1024 * 1024, 'b')));
        QCOMPARE(fetch(*m_client, to(m_server->url())).body().size(), 16 * 1024 * 1024);
    }

    void aGzipBombIsRefusedWithoutItsMemory()
    {
        constexpr qint64 mebi = 1024 * 1024;
        const QByteArray bomb = gzipBomb(200 * mebi);
        QVERIFY(bomb.size() < mebi);
        m_server->on("/", FaultServer::answer(200, bomb, {"Content-Encoding: gzip"}));
        const qint64 before = peakMemory();
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url()));
        const qint64 after = peakMemory();
        qInfo("%lld bytes on the wire, peak memory %lld -> %lld MiB", qint64(bomb.size()), before, after);
        QVERIFY(outcome.failedAs(Kind::TooLarge));
        QVERIFY(after - before < 64);
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void cancellingFailsInsideTheCallAndClosesTheConnection()
    {
        m_server->on("/", FaultServer::sendAndWait("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf"));
        TaskScope scope;
        const auto outcome = start(*m_client, to(m_server->url()), scope.token());
        QTRY_COMPARE(m_server->requests().size(), 1);
        QCOMPARE(m_server->openConnections(), 1);
        scope.cancel();
        QVERIFY(outcome->failedAs(Kind::Cancelled));
        QTRY_COMPARE(m_server->openConnections(), 0);
        QCOMPARE(outcome.use_count(), 1);
    }

    void cancellingBeforeOrAtOnceSendsNothing()
    {
        TaskScope scope;
        const CancelToken token = scope.token();
        const auto second = start(*m_client, to(m_server->url()), token);
        scope.cancel();
        const auto first = start(*m_client, to(m_server->url()), token);
        QVERIFY(first->failedAs(Kind::Cancelled));
        QVERIFY(second->failedAs(Kind::Cancelled));
        m_server->on("/after", FaultServer::answer(200));
        QCOMPARE(fetch(*m_client, to(m_server->url("/after"))).status(), 200);
        QTRY_VERIFY(m_server->openConnections() <= 1);
        for (const auto& request : m_server->requests())
            QCOMPARE(request.target, QByteArray("/after"));
    }

    void cancellingAfterTheAnswerChangesNothing()
    {
        m_server->on("/", FaultServer::answer(200, "here"));
        TaskScope scope;
        const auto outcome = start(*m_client, to(m_server->url()), scope.token());
        QTRY_VERIFY(outcome->result);
        scope.cancel();
        QCOMPARE(outcome->body(), QByteArray("here"));
    }

    void destroyingTheClientFailsThoseStillWaiting()
    {
        m_server->on("/", FaultServer::sendAndWait());
        QList<std::shared_ptr<HttpOutcome>> outcomes;
        for (int request = 0; request < 10; ++request)
            outcomes.append(start(*m_client, to(m_server->url())));
        QTRY_VERIFY(m_server->requests().size() >= 6);
        m_client.reset();
        for (const auto& outcome : outcomes) {
            QVERIFY(outcome->failedAs(Kind::Cancelled));
            QCOMPARE(outcome.use_count(), 1);
        }
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void destroyingTheClientAtOnceOrUnusedIsClean()
    {
        const auto outcome = start(*m_client, to(m_server->url()));
        m_client.reset();
        QVERIFY(outcome->failedAs(Kind::Cancelled));
        QtHttpClient unused;
    }

    void thirtyOverlappingRequestsAnsweredInReverseGetEachItsOwn()
    {
        // The newest first, whenever no further request comes: the client opens only a few connections at a time.
        QList<FaultServer::Request> waiting;
        QTimer quiet;
        quiet.setInterval(20);
        connect(&quiet, &QTimer::timeout, this, [&] {
            if (!waiting.isEmpty()) {
                const auto newest = waiting.takeLast();
                FaultServer::answer(200, "body of " + newest.target)(newest);
            }
        });
        quiet.start();
        QList<std::shared_ptr<HttpOutcome>> outcomes;
        qsizetype atOnce = 0;
        for (int request = 0; request < 30; ++request) {
            const QByteArray path = "/" + QByteArray::number(request);
            m_server->on(path, [&](const FaultServer::Request& received) {
                waiting.append(received);
                atOnce = std::max(atOnce, waiting.size());
                quiet.start();
            });
            outcomes.append(start(*m_client, to(m_server->url(path))));
        }
        for (int request = 0; request < 30; ++request) {
            QTRY_VERIFY(outcomes.at(request)->result);
            QCOMPARE(outcomes.at(request)->body(), "body of /" + QByteArray::number(request));
        }
        QCOMPARE(m_server->requests().size(), 30);
        QCOMPARE(atOnce, 6);
    }

    void aRequestWithoutANetworkWaitsForIt()
    {
        auto network = std::make_unique<ScriptedConnectivity>(false);
        ScriptedConnectivity* const connectivity = network.get();
        QtHttpClient client(FaultServer::issuer(), std::move(network));
        const auto outcome = start(client, to(QUrl(u"https://no-such-host.invalid/"_s)));
        QTRY_VERIFY(connectivity->questions() > 0);
        QTest::qWait(100);
        QVERIFY(!outcome->result);
        connectivity->setOnline(true);
        QTRY_VERIFY(outcome->result);
        // It was sent again, and failed as a machine with a network fails.
        QVERIFY(outcome->failedAs(Kind::Network));
        QVERIFY(connectivity->questions() >= 3);
        qInfo() << outcome->words();
    }

    void aNetworkThatStaysAwayFailsWithTheFirstErrorAtTheLimit_data()
    {
        QTest::addColumn<int>("inactivity");
        QTest::addColumn<int>("overall");
        QTest::newRow("inactivity limit") << 400 << 5000;
        QTest::newRow("overall limit") << 5000 << 400;
    }
    void aNetworkThatStaysAwayFailsWithTheFirstErrorAtTheLimit()
    {
        QFETCH(int, inactivity);
        QFETCH(int, overall);
        QtHttpClient client(FaultServer::issuer(), std::make_unique<ScriptedConnectivity>(false));
        HttpRequest request = to(QUrl(u"https://no-such-host.invalid/"_s));
        request.inactivityLimit = std::chrono::milliseconds(inactivity);
        request.overallLimit = std::chrono::milliseconds(overall);
        QElapsedTimer timer;
        timer.start();
        const HttpOutcome outcome = fetch(client, request);
        QVERIFY(outcome.failedAs(Kind::Network));
        QCOMPARE(outcome.words(), u"Host no-such-host.invalid not found"_s);
        QVERIFY2(timer.elapsed() >= 390 && timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    }

    void withANetworkANameThatIsNotThereFailsAtOnce()
    {
        const HttpOutcome outcome = fetch(*m_client, to(QUrl(u"https://no-such-host.invalid/"_s)));
        QVERIFY(outcome.failedAs(Kind::Network));
        QCOMPARE(outcome.words(), u"Host no-such-host.invalid not found"_s);
    }

    void loopbackNeedsNoNetwork()
    {
        QtHttpClient client(FaultServer::issuer(), std::make_unique<ScriptedConnectivity>(false));
        m_server->on("/", FaultServer::answer(200, "here"));
        QCOMPARE(fetch(client, to(m_server->url())).body(), QByteArray("here"));
    }

    void aWaitingRequestCanBeCancelled()
    {
        auto network = std::make_unique<ScriptedConnectivity>(false);
        ScriptedConnectivity* const connectivity = network.get();
        QtHttpClient client(FaultServer::issuer(), std::move(network));
        TaskScope scope;
        const auto outcome = start(client, to(QUrl(u"https://no-such-host.invalid/"_s)), scope.token());
        QTRY_VERIFY(connectivity->questions() > 0);
        scope.cancel();
        QVERIFY(outcome->failedAs(Kind::Cancelled));
        connectivity->setOnline(true);
    }

    void theSystemsOwnWordIsAskedWithoutHarm()
    {
        QtHttpClient client(FaultServer::issuer());
        HttpRequest request = to(QUrl(u"https://no-such-host.invalid/"_s));
        request.inactivityLimit = 300ms;
        QVERIFY(fetch(client, request).failedAs(Kind::Network));
    }

    void nothingIsWrittenToDisk()
    {
        m_server->on("/", FaultServer::answer(200, "kept", {"ETag: \"1\"", "Set-Cookie: a=b; Max-Age=9999"}));
        fetch(*m_client, to(m_server->url()));
        fetch(*m_client, to(m_server->url()));
        m_client.reset();
        QDirIterator files(home().path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        QVERIFY2(!files.hasNext(), qPrintable(files.next()));
    }
};

int main(int argc, char** argv)
{
    for (const char* const place :
         {"HOME", "TMPDIR", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        qputenv(place, home().path().toLocal8Bit());
    QCoreApplication application(argc, argv);
    HttpFaultsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "HttpFaultsTest.moc"
