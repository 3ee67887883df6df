#include "HttpServerFixture.h"
#include "Rows.h"
#include "TestMain.h"

namespace quillmere {

using Kind = HttpFailure::Kind;

/** Verification of server certificates. */
class HttpCertificatesTest : public HttpServerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void badCertificateIsRefused_data()
    {
        rows<QByteArray>({"certificate"}, {{"expired", "expired"},
                                           {"self-signed", "self-signed"},
                                           {"wrong host", "wrong-host"},
                                           {"unknown issuer", "unknown-issuer"}});
    }
    void badCertificateIsRefused()
    {
        QFETCH(QByteArray, certificate);
        FaultServer server(certificate);
        server.on("/", FaultServer::answer(200, "do not trust me"));
        const HttpOutcome outcome = fetch(*m_client, requestTo(server.url()));
        QVERIFY(outcome.failedWith(Kind::Network));
        QVERIFY(!outcome.errorDescription().isEmpty());
        QVERIFY(server.connections() > 0);
        QVERIFY(server.requests().isEmpty());
    }

    void goodCertificateIsRefusedWithoutExtraIssuer()
    {
        QtHttpClient client({}, std::make_unique<ScriptedConnectivity>(true));
        QVERIFY(fetch(client, requestTo(m_server->url())).failedWith(Kind::Network));
        QVERIFY(m_server->requests().isEmpty());
    }

    void goodServerIsTrustedAfterRefusedOne()
    {
        FaultServer server("unknown-issuer");
        m_server->on("/", FaultServer::answer(200, "here"));
        for (int count = 0; count < 2; ++count) {
            QCOMPARE(get().body(), QByteArray("here"));
            QVERIFY(fetch(*m_client, requestTo(server.url())).failedWith(Kind::Network));
        }
        QVERIFY(server.requests().isEmpty());
    }
};

QUILLMERE_TEST(HttpCertificatesTest, QCoreApplication)

} // namespace quillmere

#include "HttpCertificatesTest.moc"
