#include "HttpServerFixture.h"
#include "TaskScope.h"
#include "TestMain.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

using Kind = HttpFailure::Kind;

/** Requests on a machine without a network. */
class HttpConnectivityTest : public HttpServerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void requestWaitsForNetwork()
    {
        auto network = std::make_unique<ScriptedConnectivity>(false);
        ScriptedConnectivity* const connectivity = network.get();
        QtHttpClient client(FaultServer::issuer(), std::move(network));
        const auto outcome = start(client, requestTo(QUrl(u"https://no-such-host.invalid/"_s)));
        QTRY_VERIFY(connectivity->queryCount() > 0);
        QVERIFY(!outcome->result);
        connectivity->setOnline(true);
        QTRY_VERIFY(outcome->result);
        // The request was sent again and failed as it does with a network.
        QVERIFY(outcome->failedWith(Kind::Network));
        QVERIFY(connectivity->queryCount() >= 3);
    }

    void waitingRequestIsRetriedWithoutNetworkNotification()
    {
        auto network = std::make_unique<ScriptedConnectivity>(false);
        const ScriptedConnectivity* const connectivity = network.get();
        QtHttpClient client(FaultServer::issuer(), std::move(network));
        const auto outcome = start(client, requestTo(QUrl(u"https://no-such-host.invalid/"_s)));
        // The connectivity is queried once after each failed attempt.
        QTRY_VERIFY_WITH_TIMEOUT(connectivity->queryCount() >= 3, 15000);
        QVERIFY(!outcome->result);
    }

    void requestFailsWithFirstErrorWhenNetworkStaysDown_data()
    {
        QTest::addColumn<int>("inactivity");
        QTest::addColumn<int>("overall");
        QTest::newRow("inactivity limit") << 400 << 5000;
        QTest::newRow("overall limit") << 5000 << 400;
    }
    void requestFailsWithFirstErrorWhenNetworkStaysDown()
    {
        QFETCH(int, inactivity);
        QFETCH(int, overall);
        QtHttpClient client(FaultServer::issuer(), std::make_unique<ScriptedConnectivity>(false));
        HttpRequest request = requestTo(QUrl(u"https://no-such-host.invalid/"_s));
        request.inactivityLimit = std::chrono::milliseconds(inactivity);
        request.overallLimit = std::chrono::milliseconds(overall);
        QElapsedTimer timer;
        timer.start();
        const HttpOutcome outcome = fetch(client, request);
        QVERIFY(outcome.failedWith(Kind::Network));
        QCOMPARE(outcome.errorDescription(), u"Host no-such-host.invalid not found"_s);
        QVERIFY2(timer.elapsed() >= 390 && timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    }

    void unknownHostFailsAtOnceWithNetwork()
    {
        const HttpOutcome outcome = fetch(*m_client, requestTo(QUrl(u"https://no-such-host.invalid/"_s)));
        QVERIFY(outcome.failedWith(Kind::Network));
        QCOMPARE(outcome.errorDescription(), u"Host no-such-host.invalid not found"_s);
    }

    void loopbackNeedsNoNetwork()
    {
        QtHttpClient client(FaultServer::issuer(), std::make_unique<ScriptedConnectivity>(false));
        m_server->on("/", FaultServer::answer(200, "here"));
        QCOMPARE(fetch(client, requestTo(m_server->url())).body(), QByteArray("here"));
    }

    void waitingRequestCanBeCancelled()
    {
        auto network = std::make_unique<ScriptedConnectivity>(false);
        ScriptedConnectivity* const connectivity = network.get();
        QtHttpClient client(FaultServer::issuer(), std::move(network));
        TaskScope scope;
        const auto outcome = start(client, requestTo(QUrl(u"https://no-such-host.invalid/"_s)), scope.token());
        QTRY_VERIFY(connectivity->queryCount() > 0);
        scope.cancel();
        QVERIFY(outcome->failedWith(Kind::Cancelled));
        connectivity->setOnline(true);
    }

    void systemConnectivityIsUsedByDefault()
    {
        QtHttpClient client(FaultServer::issuer());
        HttpRequest request = requestTo(QUrl(u"https://no-such-host.invalid/"_s));
        request.inactivityLimit = 300ms;
        QVERIFY(fetch(client, request).failedWith(Kind::Network));
    }
};

QUILLMERE_TEST(HttpConnectivityTest, QCoreApplication)

} // namespace quillmere

#include "HttpConnectivityTest.moc"
