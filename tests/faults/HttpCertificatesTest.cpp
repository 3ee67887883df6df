#include "HttpOnServer.h"

#include <QTest>

using Kind = HttpFailure::Kind;

/** Which servers are trusted. */
class HttpCertificatesTest : public HttpOnServer
{
    Q_OBJECT

private Q_SLOTS:
    void aBadCertificateIsRefused_data()
    {
        QTest::addColumn<QByteArray>("certificate");
        QTest::newRow("expired") << QByteArray("expired");
        QTest::newRow("self-signed") << QByteArray("self-signed");
        QTest::newRow("wrong host") << QByteArray("wrong-host");
        QTest::newRow("unknown issuer") << QByteArray("unknown-issuer");
    }
    void aBadCertificateIsRefused()
    {
        QFETCH(QByteArray, certificate);
        FaultServer server(certificate);
        server.on("/", FaultServer::answer(200, "do not trust me"));
        const HttpOutcome outcome = fetch(*m_client, to(server.url()));
        QVERIFY(outcome.failedAs(Kind::Network));
        QVERIFY(!outcome.words().isEmpty());
        QVERIFY(server.connections() > 0);
        QVERIFY(server.requests().isEmpty());
    }

    void withoutTheExtraIssuerTheGoodCertificateIsRefusedToo()
    {
        QtHttpClient client({}, std::make_unique<ScriptedConnectivity>(true));
        QVERIFY(fetch(client, to(m_server->url())).failedAs(Kind::Network));
        QVERIFY(m_server->requests().isEmpty());
    }

    void aRefusedServerLeavesTheGoodOneTrusted()
    {
        FaultServer server("unknown-issuer");
        m_server->on("/", FaultServer::answer(200, "here"));
        QCOMPARE(fetch(*m_client, to(m_server->url())).body(), QByteArray("here"));
        QVERIFY(fetch(*m_client, to(server.url())).failedAs(Kind::Network));
        QCOMPARE(fetch(*m_client, to(m_server->url())).body(), QByteArray("here"));
        QVERIFY(fetch(*m_client, to(server.url())).failedAs(Kind::Network));
        QVERIFY(server.requests().isEmpty());
    }
};

QTEST_GUILESS_MAIN(HttpCertificatesTest)
#include "HttpCertificatesTest.moc"
