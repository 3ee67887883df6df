#include "FaultServer.h"
#include "HttpOutcome.h"
#include "QtHttpClient.h"
#include "ScriptedConnectivity.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using Kind = HttpFailure::Kind;

class HttpAnswersTest : public QObject
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

    void anAnswerComesOverVerifiedTls()
    {
        m_server->on("/status", FaultServer::answer(200, "{\"on\":true}"));
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url("/status?page=1&q=%20a")));
        QCOMPARE(outcome.status(), 200);
        QCOMPARE(outcome.body(), QByteArray("{\"on\":true}"));
        QCOMPARE(m_server->requests().size(), 1);
        QCOMPARE(m_server->requests().first().target, QByteArray("/status?page=1&q=%20a"));
    }

    void startingNeverHoldsUpTheScreenThread()
    {
        QElapsedTimer timer;
        timer.start();
        m_client = std::make_unique<QtHttpClient>(FaultServer::issuer());
        m_server->on("/", FaultServer::answer(200, "here"));
        const auto outcome = start(*m_client, to(m_server->url()));
        qInfo("made and asked in %.3f ms", double(timer.nsecsElapsed()) / 1e6);
        QVERIFY(timer.elapsed() < 20);
        QTRY_VERIFY(outcome->result);
        qInfo("answered after %lld ms", timer.elapsed());
    }

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
        qInfo() << outcome.words();
        QVERIFY(outcome.failedAs(Kind::Network));
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

    void plainHttpIsServedToo()
    {
        FaultServer server("");
        server.on("/", FaultServer::answer(200, "plain"));
        QCOMPARE(fetch(*m_client, to(server.url())).body(), QByteArray("plain"));
    }

    void anyOtherSchemeFailsAndReadsNothing_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::newRow("file") << QUrl(u"file:///etc/hostname"_s);
        QTest::newRow("ftp") << QUrl(u"ftp://localhost/"_s);
        QTest::newRow("data") << QUrl(u"data:text/plain,hello"_s);
        QTest::newRow("qrc") << QUrl(u"qrc:/qt/qml"_s);
        QTest::newRow("none") << QUrl(u"/api"_s);
        QTest::newRow("empty") << QUrl();
    }
    void anyOtherSchemeFailsAndReadsNothing()
    {
        QFETCH(QUrl, url);
        const auto outcome = start(*m_client, to(url));
        QVERIFY(outcome->failedAs(Kind::Network));
        QCOMPARE(outcome->words(), u"Protocol \"%1\" is unknown"_s.arg(url.scheme()));
    }

    void everyStatusIsAnAnswer_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {200, 201, 204, 206, 226, 299, 300, 304, 305, 400, 401, 402, 403, 404,
                                 405, 407, 409, 410, 418, 429, 451, 499, 500, 501, 502, 503, 504, 599})
            QTest::addRow("%d", status) << status;
    }
    void everyStatusIsAnAnswer()
    {
        QFETCH(int, status);
        m_server->on("/", FaultServer::answer(status, "words"));
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url()));
        QCOMPARE(outcome.words(), u"(no failure)"_s);
        QCOMPARE(outcome.status(), status);
        if (status != 204 && status != 304 && status != 305) // which come without a body
            QCOMPARE(outcome.body(), QByteArray("words"));
    }

    void aRedirectWithoutAnAddressIsAnAnswer()
    {
        m_server->on("/", FaultServer::answer(302, "nowhere"));
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url()));
        QCOMPARE(outcome.words(), u"(no failure)"_s);
        QCOMPARE(outcome.status(), 302);
    }

    void aStatusBelow200IsHandedOnToo()
    {
        m_server->on("/", FaultServer::sendAndClose("HTTP/1.1 199 Odd\r\nContent-Length: 0\r\n\r\n"));
        QCOMPARE(fetch(*m_client, to(m_server->url())).status(), 199);
    }

    void redirectsAreFollowed_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {301, 302, 303, 307, 308})
            QTest::addRow("%d", status) << status;
    }
    void redirectsAreFollowed()
    {
        QFETCH(int, status);
        FaultServer other;
        other.on("/there", FaultServer::answer(200, "found"));
        m_server->on("/", FaultServer::redirect("/next", status));
        m_server->on("/next", FaultServer::redirect(other.url("/there").toEncoded(), status));
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url()));
        QCOMPARE(outcome.status(), 200);
        QCOMPARE(outcome.body(), QByteArray("found"));
    }

    void aRedirectNeverLeavesTls()
    {
        FaultServer plain("");
        m_server->on("/", FaultServer::redirect(plain.url().toEncoded()));
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url()));
        qInfo() << outcome.words();
        QVERIFY(outcome.failedAs(Kind::Network));
        QCOMPARE(plain.connections(), 0);
    }

    void aRedirectNeverReadsAFile()
    {
        m_server->on("/", FaultServer::redirect("file:///etc/hostname"));
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url()));
        qInfo() << outcome.words();
        QVERIFY(outcome.failedAs(Kind::Network));
    }

    void aLoopOfRedirectsEnds()
    {
        QList<int> followed;
        m_server->on("/", [&](const FaultServer::Request& request) {
            followed.append(request.target.mid(2).toInt());
            FaultServer::redirect("/?" + QByteArray::number(followed.last() + 1))(request);
        });
        const HttpOutcome outcome = fetch(*m_client, to(m_server->url("/?0")));
        qInfo() << outcome.words() << followed;
        QVERIFY(outcome.failedAs(Kind::Network));
        QCOMPARE(*std::max_element(followed.begin(), followed.end()), 20);
    }
};

QTEST_GUILESS_MAIN(HttpAnswersTest)
#include "HttpAnswersTest.moc"
