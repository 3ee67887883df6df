#include "HubFixture.h"
#include "Rows.h"
#include "TestMain.h"

#include <QThread>

using namespace std::chrono_literals;

namespace quillmere {

/** Tests what the hub client returns for good answers, bad answers and failures. */
class HubFetchTest : public HubFixture
{
    Q_OBJECT

private Q_SLOTS:
    void onlyStatus2xxSucceeds_data()
    {
        rows<int, QString>({"status", "outcome"}, {{"199", 199, u"The hub answered 199."_s},
                                                   {"200", 200, u"success"_s},
                                                   {"206", 206, u"success"_s},
                                                   {"299", 299, u"success"_s},
                                                   {"300", 300, u"The hub answered 300."_s},
                                                   {"304", 304, u"The hub answered 304."_s},
                                                   {"404", 404, u"The hub answered 404."_s},
                                                   {"503", 503, u"The hub answered 503."_s}});
    }

    void onlyStatus2xxSucceeds()
    {
        QFETCH(int, status);
        const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
        m_http->answer(0, status, "{}");
        QTRY_VERIFY(isFinished(result));
        QTEST(outcome(result), "outcome");
        if (!**result)
            QVERIFY((*result)->error() == HubError::http(status));
    }

    void unreadableBodyFails_data()
    {
        rows<QByteArray>({"body"}, {{"an array", "[]"},
                                    {"null", "null"},
                                    {"a web page", "<!DOCTYPE html><html><body>Welcome</body></html>"},
                                    {"empty", ""},
                                    {"cut short", "{\"news\":{\"tower_live\":tr"},
                                    {"not UTF-8", "{\"news\":\"\xE9\"}"},
                                    {"text after the document", "{}{}"},
                                    {"too deep", "{\"a\":" + QByteArray(600, '[') + QByteArray(600, ']') + '}'}});
    }

    void unreadableBodyFails()
    {
        QFETCH(QByteArray, body);
        const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
        m_http->answer(0, 200, body);
        QTRY_COMPARE(outcome(result), unreadableText);
    }

    void invalidMemberIsDecodedAsDefault()
    {
        const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
        m_http->answer(0, 200, R"({"news":{"tower_live":true,"weather":[1]},"rewindery":{"tapes":"many"}})");
        QTRY_COMPARE(outcome(result), u"success"_s);
        TVStatus expected;
        expected.news.towerLive = true;
        QVERIFY((*result)->value() == expected);
    }

    void failedRequestHasReason_data()
    {
        using Kind = HttpFailure::Kind;
        rows<Kind, QString, QString>(
            {"kind", "description", "outcome"},
            {{"network", Kind::Network, u"Host hub.test not found"_s, u"Host hub.test not found"_s},
             {"placeholder in the description", Kind::Network, u"%1 No route."_s, u"%1 No route."_s},
             {"no description", Kind::Network, u""_s, u"The hub couldn't be reached."_s},
             {"timeout", Kind::TimedOut, u"Timer 3"_s, u"The hub took too long to answer."_s},
             {"too large", Kind::TooLarge, u"Cap"_s, u"The hub's answer was too big to read."_s},
             {"cut short", Kind::Truncated, u""_s, u"The hub's answer was cut short."_s},
             {"unreadable", Kind::Unreadable, u""_s, unreadableText},
             {"cancelled", Kind::Cancelled, u""_s, cancelledText}});
    }

    void failedRequestHasReason()
    {
        QFETCH(HttpFailure::Kind, kind);
        QFETCH(QString, description);
        const auto result = pendingResult(m_hub->get<TVStatus>(statusPath));
        m_http->fail(0, description, kind);
        QTRY_VERIFY(isFinished(result));
        QTEST(outcome(result), "outcome");
    }

    void invalidPathSendsNothing()
    {
        for (const QString& path : {u""_s, u"https://"_s, u"file:///etc/passwd"_s}) {
            const auto result = pendingResult(m_hub->get<TVStatus>(path));
            QTRY_COMPARE(outcome(result), u"That address didn't resolve."_s);
        }
        QCOMPARE(m_http->count(), 0);
    }

    void fetchRequestsAddressWithRevalidationAndLimits()
    {
        pendingResult(m_hub->get<TVStatus>(u"https://elsewhere.test/status"_s));
        const HttpRequest& request = m_http->request(0);
        QCOMPARE(request.url, QUrl(u"https://elsewhere.test/status"_s));
        QCOMPARE(request.cache, HttpRequest::Cache::Revalidate);
        QCOMPARE(request.body, HttpRequest::Body::Read);
        QVERIFY(request.inactivityLimit == 20s);
        QVERIFY(request.overallLimit == 60s);
        QCOMPARE(request.maxBytes, 16 * 1024 * 1024);
    }

    void decodedAnswerArrivesLaterOnCallersThread()
    {
        const QThread* arrivedOn = nullptr;
        const auto fetch = [](HubAPI& hub, const QThread*& thread) -> QCoro::Task<> {
            co_await hub.get<TVStatus>(statusPath);
            thread = QThread::currentThread();
        };
        const auto task = fetch(*m_hub, arrivedOn);
        m_http->answer(0, 200, "{}");
        QVERIFY(!task.isReady());
        QTRY_VERIFY(task.isReady());
        QVERIFY(arrivedOn == QThread::currentThread());
    }

    void manyFetchesWaitAtOnceAndAnswersReachTheirCallers()
    {
        QList<PendingResult<HubResult<Tape>>> results;
        for (int id = 0; id < 50; ++id)
            results.append(pendingResult(m_hub->tape(id)));
        QCOMPARE(m_http->count(), 50);
        m_http->answer(49, 404);
        QTRY_COMPARE(outcome(results.at(49)), u"The hub answered 404."_s);
        for (int id = 48; id >= 0; --id) {
            QVERIFY(!isFinished(results.at(id)));
            m_http->answer(id, 200, "{\"id\":" + QByteArray::number(id) + '}');
        }
        for (int id = 0; id < 49; ++id) {
            QTRY_VERIFY(isFinished(results.at(id)));
            QCOMPARE((*results.at(id))->value().id, id);
        }
    }
};

QUILLMERE_TEST(HubFetchTest, QCoreApplication)

} // namespace quillmere

#include "HubFetchTest.moc"
