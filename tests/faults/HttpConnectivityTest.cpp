#include "HttpServerFixture.h"
#include "Rows.h"
#include "TaskScope.h"
#include "TestMain.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

using Kind = HttpFailure::Kind;

namespace {

const QUrl unknownHost(u"https://no-such-host.invalid/"_s);

/** A client on a machine whose network is down. */
struct OfflineClient
{
    std::unique_ptr<ScriptedConnectivity> network = std::make_unique<ScriptedConnectivity>(false);
    ScriptedConnectivity* const connectivity = network.get();
    QtHttpClient client{FaultServer::issuer(), std::move(network)};
};

} // namespace

/** Requests on a machine without a network. */
class HttpConnectivityTest : public HttpServerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void requestWaitsForNetwork()
    {
        OfflineClient offline;
        const auto outcome = start(offline.client, requestTo(unknownHost));
        QTRY_VERIFY(offline.connectivity->queryCount() > 0);
        QVERIFY(!outcome->result);
        offline.connectivity->setOnline(true);
        QTRY_VERIFY(outcome->result);
        // The request was sent again and failed as it does with a network.
        QVERIFY(outcome->failedWith(Kind::Network));
        QVERIFY(offline.connectivity->queryCount() >= 3);
    }

    void waitingRequestIsRetriedWithoutNetworkNotification()
    {
        OfflineClient offline;
        const auto outcome = start(offline.client, requestTo(unknownHost));
        // The connectivity is queried once after each failed attempt.
        QTRY_VERIFY_WITH_TIMEOUT(offline.connectivity->queryCount() >= 3, 15000);
        QVERIFY(!outcome->result);
    }

    void requestFailsWithFirstErrorWhenNetworkStaysDown_data()
    {
        rows<int, int>({"inactivity", "overall"}, {{"inactivity limit", 400, 5000}, {"overall limit", 5000, 400}});
    }
    void requestFailsWithFirstErrorWhenNetworkStaysDown()
    {
        QFETCH(int, inactivity);
        QFETCH(int, overall);
        OfflineClient offline;
        const HttpOutcome outcome = fetch(offline.client, requestTo(unknownHost, std::chrono::milliseconds(inactivity),
                                                                    std::chrono::milliseconds(overall)));
        QVERIFY(outcome.failedWith(Kind::Network));
        QCOMPARE(outcome.errorDescription(), u"Host no-such-host.invalid not found"_s);
        QVERIFY2(outcome.milliseconds >= 390 && outcome.milliseconds < 3000,
                 qPrintable(QString::number(outcome.milliseconds)));
    }

    void unknownHostFailsAtOnceWithNetwork()
    {
        const HttpOutcome outcome = fetch(*m_client, requestTo(unknownHost));
        QVERIFY(outcome.failedWith(Kind::Network));
        QCOMPARE(outcome.errorDescription(), u"Host no-such-host.invalid not found"_s);
    }

    void loopbackNeedsNoNetwork()
    {
        OfflineClient offline;
        m_server->on("/", FaultServer::answer(200, "here"));
        QCOMPARE(fetch(offline.client, requestTo(m_server->url())).body(), QByteArray("here"));
    }

    void waitingRequestCanBeCancelled()
    {
        OfflineClient offline;
        TaskScope scope;
        const auto outcome = start(offline.client, requestTo(unknownHost), scope.token());
        QTRY_VERIFY(offline.connectivity->queryCount() > 0);
        scope.cancel();
        QVERIFY(outcome->failedWith(Kind::Cancelled));
        offline.connectivity->setOnline(true);
    }

    void systemConnectivityIsUsedByDefault()
    {
        QtHttpClient client(FaultServer::issuer());
        QVERIFY(fetch(client, requestTo(unknownHost, 300ms)).failedWith(Kind::Network));
    }
};

QUILLMERE_TEST(HttpConnectivityTest, QCoreApplication)

} // namespace quillmere

#include "HttpConnectivityTest.moc"
