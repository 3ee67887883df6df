#include "HttpOnServer.h"
#include "TaskScope.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Kind = HttpFailure::Kind;

/** Requests on a machine whose network is away. */
class HttpConnectivityTest : public HttpOnServer
{
    Q_OBJECT

private Q_SLOTS:
    void aRequestWithoutANetworkWaitsForIt()
    {
        auto network = std::make_unique<ScriptedConnectivity>(false);
        ScriptedConnectivity* const connectivity = network.get();
        QtHttpClient client(FaultServer::issuer(), std::move(network));
        const auto outcome = start(client, to(QUrl(u"https://no-such-host.invalid/"_s)));
        QTRY_VERIFY(connectivity->questions() > 0);
        QVERIFY(!outcome->result);
        connectivity->setOnline(true);
        QTRY_VERIFY(outcome->result);
        // It was sent again, and failed as a machine with a network fails.
        QVERIFY(outcome->failedAs(Kind::Network));
        QVERIFY(connectivity->questions() >= 3);
    }

    void whileTheNetworkIsWaitedForItIsTriedWithoutAnyonesWord()
    {
        auto network = std::make_unique<ScriptedConnectivity>(false);
        const ScriptedConnectivity* const connectivity = network.get();
        QtHttpClient client(FaultServer::issuer(), std::move(network));
        const auto outcome = start(client, to(QUrl(u"https://no-such-host.invalid/"_s)));
        // Asked once after each attempt that failed.
        QTRY_VERIFY_WITH_TIMEOUT(connectivity->questions() >= 3, 15000);
        QVERIFY(!outcome->result);
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
};

QTEST_GUILESS_MAIN(HttpConnectivityTest)
#include "HttpConnectivityTest.moc"
