#include "HttpServerFixture.h"
#include "Rows.h"
#include "TestMain.h"

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
        const HttpOutcome outcome = get("/status?page=1&q=%20a");
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
        rows<QString>({"url"}, {{"file", u"file:///etc/hostname"_s},
                                {"ftp", u"ftp://localhost/"_s},
                                {"data", u"data:text/plain,hello"_s},
                                {"qrc", u"qrc:/qt/qml"_s},
                                {"none", u"/api"_s},
                                {"empty", QString()}});
    }
    void otherSchemesFail()
    {
        QFETCH(const QString, url);
        const auto outcome = start(*m_client, requestTo(QUrl(url)));
        QVERIFY(outcome->failedWith(Kind::Network));
        QCOMPARE(outcome->errorDescription(), u"Protocol \"%1\" is unknown"_s.arg(QUrl(url).scheme()));
    }

    void everyStatusIsReturnedAsAnswer_data()
    {
        // 302 has no Location header, so there is nothing to follow.
        rowsOfStatuses({200, 201, 204, 206, 226, 299, 300, 302, 304, 305, 400, 401, 402, 403, 404,
                        405, 407, 409, 410, 418, 429, 451, 499, 500, 501, 502, 503, 504, 599});
    }
    void everyStatusIsReturnedAsAnswer()
    {
        QFETCH(int, status);
        m_server->on("/", FaultServer::answer(status, "words"));
        const HttpOutcome outcome = get();
        QCOMPARE(outcome.errorDescription(), u"(no failure)"_s);
        QCOMPARE(outcome.status(), status);
        const bool hasBody = status >= 200 && status <= 299 && status != 204;
        QCOMPARE(outcome.body(), hasBody ? QByteArray("words") : QByteArray());
    }

    void redirectsAreFollowed_data() { rowsOfStatuses({301, 302, 303, 307, 308}); }
    void redirectsAreFollowed()
    {
        QFETCH(int, status);
        FaultServer other;
        other.on("/there", FaultServer::answer(200, "found"));
        m_server->on("/", FaultServer::redirect("/next", status));
        m_server->on("/next", FaultServer::redirect(other.url("/there").toEncoded(), status));
        const HttpOutcome outcome = get();
        QCOMPARE(outcome.status(), 200);
        QCOMPARE(outcome.body(), QByteArray("found"));
    }

    void redirectToHttpOrFileFails()
    {
        FaultServer plain("");
        for (const QByteArray& target : {plain.url().toEncoded(), QByteArray("file:///etc/hostname")}) {
            m_server->on("/", FaultServer::redirect(target));
            QVERIFY(get().failedWith(Kind::Network));
        }
        QCOMPARE(plain.connections(), 0);
    }

    void redirectLoopFails()
    {
        QList<int> followed;
        m_server->on("/", [&](const FaultServer::Request& request) {
            followed.append(request.target.mid(2).toInt());
            FaultServer::redirect("/?" + QByteArray::number(followed.last() + 1))(request);
        });
        QVERIFY(get("/?0").failedWith(Kind::Network));
        QCOMPARE(*std::max_element(followed.begin(), followed.end()), 20);
    }

private:
    static void rowsOfStatuses(std::initializer_list<int> statuses)
    {
        QTest::addColumn<int>("status");
        for (const int status : statuses)
            QTest::addRow("%d", status) << status;
    }
};

QUILLMERE_TEST(HttpAnswersTest, QCoreApplication)

} // namespace quillmere

#include "HttpAnswersTest.moc"
