#include "HttpServerFixture.h"
#include "TaskScope.h"
#include "TestMain.h"

#include <QTimer>

#include <algorithm>

namespace quillmere {

using Kind = HttpFailure::Kind;

/** Cancelled requests, and many requests at the same time. */
class HttpCancellingTest : public HttpServerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cancellingFailsRequestAtOnceAndClosesConnection()
    {
        m_server->on("/", FaultServer::sendAndWait("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf"));
        TaskScope scope;
        const auto outcome = start(*m_client, requestTo(m_server->url()), scope.token());
        QTRY_COMPARE(m_server->requests().size(), 1);
        QCOMPARE(m_server->openConnections(), 1);
        scope.cancel();
        QVERIFY(outcome->failedWith(Kind::Cancelled));
        QTRY_COMPARE(m_server->openConnections(), 0);
        QCOMPARE(outcome.use_count(), 1);
    }

    void requestCancelledBeforeSendingIsNotSent()
    {
        TaskScope scope;
        const std::stop_token token = scope.token();
        const auto second = start(*m_client, requestTo(m_server->url()), token);
        scope.cancel();
        const auto first = start(*m_client, requestTo(m_server->url()), token);
        QVERIFY(first->failedWith(Kind::Cancelled));
        QVERIFY(second->failedWith(Kind::Cancelled));
        m_server->on("/after", FaultServer::answer(200));
        QCOMPARE(get("/after").status(), 200);
        QTRY_VERIFY(m_server->openConnections() <= 1);
        for (const auto& request : m_server->requests())
            QCOMPARE(request.target, QByteArray("/after"));
    }

    void queuedRequestIsNotSentWhenCancelled()
    {
        m_server->on("/slow", FaultServer::sendAndWait());
        m_server->on("/next", FaultServer::answer(200, "next"));
        TaskScope slow;
        for (int request = 0; request < 6; ++request)
            start(*m_client, requestTo(m_server->url("/slow")), slow.token());
        QTRY_COMPARE(m_server->requests().size(), 6);
        TaskScope scope;
        const auto waiting = start(*m_client, requestTo(m_server->url("/waiting")), scope.token());
        const auto next = start(*m_client, requestTo(m_server->url("/next")));
        scope.cancel();
        QVERIFY(waiting->failedWith(Kind::Cancelled));
        slow.cancel();
        QTRY_COMPARE(next->body(), QByteArray("next"));
        QCOMPARE(m_server->requests().size(), 7);
    }

    void cancellingAfterAnswerHasNoEffect()
    {
        m_server->on("/", FaultServer::answer(200, "here"));
        TaskScope scope;
        const auto outcome = start(*m_client, requestTo(m_server->url()), scope.token());
        QTRY_VERIFY(outcome->result);
        scope.cancel();
        QCOMPARE(outcome->body(), QByteArray("here"));
    }

    void pendingRequestsFailWhenClientIsDestroyed()
    {
        m_server->on("/", FaultServer::sendAndWait());
        QList<std::shared_ptr<HttpOutcome>> outcomes;
        for (int request = 0; request < 10; ++request)
            outcomes.append(start(*m_client, requestTo(m_server->url())));
        QTRY_VERIFY(m_server->requests().size() >= 6);
        m_client.reset();
        for (const auto& outcome : outcomes) {
            QVERIFY(outcome->failedWith(Kind::Cancelled));
            QCOMPARE(outcome.use_count(), 1);
        }
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void clientCanBeDestroyedAtOnceOrUnused()
    {
        const auto outcome = start(*m_client, requestTo(m_server->url()));
        m_client.reset();
        QVERIFY(outcome->failedWith(Kind::Cancelled));
        QtHttpClient unused;
    }

    void overlappingRequestsAnsweredInReverseGetOwnAnswers()
    {
        // Answers the newest request after each 20 ms without another one, as the client opens few connections.
        QList<FaultServer::Request> waiting;
        QTimer pauseTimer;
        connect(&pauseTimer, &QTimer::timeout, this, [&] {
            if (!waiting.isEmpty()) {
                const auto newest = waiting.takeLast();
                FaultServer::answer(200, newest.target)(newest);
            }
        });
        pauseTimer.start(20);
        QList<std::shared_ptr<HttpOutcome>> outcomes;
        qsizetype atOnce = 0;
        for (int request = 0; request < 30; ++request) {
            const QByteArray path = "/" + QByteArray::number(request);
            m_server->on(path, [&](const FaultServer::Request& received) {
                waiting.append(received);
                atOnce = std::max(atOnce, waiting.size());
                pauseTimer.start();
            });
            outcomes.append(start(*m_client, requestTo(m_server->url(path))));
        }
        for (int request = 0; request < 30; ++request) {
            QTRY_VERIFY(outcomes.at(request)->result);
            QCOMPARE(outcomes.at(request)->body(), "/" + QByteArray::number(request));
        }
        QCOMPARE(m_server->requests().size(), 30);
        QCOMPARE(atOnce, 6);
    }
};

QUILLMERE_TEST(HttpCancellingTest, QCoreApplication)

} // namespace quillmere

#include "HttpCancellingTest.moc"
