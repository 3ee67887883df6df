#include "HttpServerFixture.h"
#include "TestMain.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillmere {

using Kind = HttpFailure::Kind;

/** Answers with any status, and allowed redirects. */
class HttpAnswersTest : public HttpServerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void answerIsReceivedOverVerifiedTls()
    {
        m_server->on("/status", FaultServer::answer(200, "{\"on\":true}"));
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url("/status?page=1&q=%20a")));
        QCOMPARE(outcome.status(), 200);
        QCOMPARE(outcome.body(), QByteArray("{\"on\":true}"));
        QCOMPARE(m_server->requests().size(), 1);
        QCOMPARE(m_server->requests().first().target, QByteArray("/status?page=1&q=%20a"));
    }

    void plainHttpIsSupported()
    {
        FaultServer server("");
        server.on("/", FaultServer::answer(200, "plain"));
        QCOMPARE(fetch(*m_client, requestTo(server.url())).body(), QByteArray("plain"));
    }

    void otherSchemesFail_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::newRow("file") << QUrl(u"file:///etc/hostname"_s);
        QTest::newRow("ftp") << QUrl(u"ftp://localhost/"_s);
        QTest::newRow("data") << QUrl(u"data:text/plain,hello"_s);
        QTest::newRow("qrc") << QUrl(u"qrc:/qt/qml"_s);
        QTest::newRow("none") << QUrl(u"/api"_s);
        QTest::newRow("empty") << QUrl();
    }
    void otherSchemesFail()
    {
        QFETCH(QUrl, url);
        const auto outcome = start(*m_client, requestTo(url));
        QVERIFY(outcome->failedWith(Kind::Network));
        QCOMPARE(outcome->errorDescription(), u"Protocol \"%1\" is unknown"_s.arg(url.scheme()));
    }

    void everyStatusIsReturnedAsAnswer_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {200, 201, 204, 206, 226, 299, 300, 304, 305, 400, 401, 402, 403, 404,
                                 405, 407, 409, 410, 418, 429, 451, 499, 500, 501, 502, 503, 504, 599})
            QTest::addRow("%d", status) << status;
    }
    void everyStatusIsReturnedAsAnswer()
    {
        QFETCH(int, status);
        m_server->on("/", FaultServer::answer(status, "words"));
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url()));
        QCOMPARE(outcome.errorDescription(), u"(no failure)"_s);
        QCOMPARE(outcome.status(), status);
        const bool hasBody = status >= 200 && status <= 299 && status != 204;
        QCOMPARE(outcome.body(), hasBody ? QByteArray("words") : QByteArray());
    }

    void redirectWithoutLocationIsReturnedAsAnswer()
    {
        m_server->on("/", FaultServer::answer(302, "nowhere"));
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url()));
        QCOMPARE(outcome.errorDescription(), u"(no failure)"_s);
        QCOMPARE(outcome.status(), 302);
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
        const HttpOutcome outcome = fetch(*m_client, requestTo(m_server->url()));
        QCOMPARE(outcome.status(), 200);
        QCOMPARE(outcome.body(), QByteArray("found"));
    }

    void redirectFromHttpsToHttpFails()
    {
        FaultServer plain("");
        m_server->on("/", FaultServer::redirect(plain.url().toEncoded()));
        QVERIFY(fetch(*m_client, requestTo(m_server->url())).failedWith(Kind::Network));
        QCOMPARE(plain.connections(), 0);
    }

    void redirectToFileFails()
    {
        m_server->on("/", FaultServer::redirect("file:///etc/hostname"));
        QVERIFY(fetch(*m_client, requestTo(m_server->url())).failedWith(Kind::Network));
    }

    void redirectLoopFails()
    {
        QList<int> followed;
        m_server->on("/", [&](const FaultServer::Request& request) {
            followed.append(request.target.mid(2).toInt());
            FaultServer::redirect("/?" + QByteArray::number(followed.last() + 1))(request);
        });
        QVERIFY(fetch(*m_client, requestTo(m_server->url("/?0"))).failedWith(Kind::Network));
        QCOMPARE(*std::max_element(followed.begin(), followed.end()), 20);
    }
};

QUILLMERE_TEST(HttpAnswersTest, QCoreApplication)

} // namespace quillmere

#include "HttpAnswersTest.moc"
