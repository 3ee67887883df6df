#pragma once

#include "HubAPI.h"
#include "MemoryDefaults.h"
#include "ScriptedClock.h"
#include "ScriptedHttpClient.h"
#include "Store.h"

#include <QTest>

#include <memory>

namespace quillmere {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/**
 * A store with a scripted network, and a scripted clock. Answers are decoded on another thread: tests must wait for their
 * effect.
 */
struct StoreFixture
{
    ScriptedClock clock;
    ScriptedHttpClient http;
    HubAPI hub{http, QUrl(u"https://hub.example"_s)};
    MemoryDefaults defaults;
    std::unique_ptr<Store> store = std::make_unique<Store>(hub, defaults);

    Store* operator->() const { return store.get(); }

    /** Waits for a request for `path` and answers the latest one. */
    void answer(const QString& path, const QByteArray& body, int status = 200)
    {
        http.answer(awaitRequest(path), status, body);
    }
    void fail(const QString& path, const QString& description) { http.fail(awaitRequest(path), description); }

    void answerStatus(qint64 tapes = 7) { answer(u"/api/tv/status"_s, statusOf(tapes)); }
    void answerTapes(const QStringList& titles, const QString& path = u"/api/tv/tapes"_s)
    {
        answer(path, pageOf(titles));
    }

    /** The number of requests for this path so far. */
    int requests(const QString& path) const
    {
        int count = 0;
        for (int call = 0; call < http.count(); ++call)
            count += http.request(call).url.path() == path;
        return count;
    }

    /** Waits until all answers so far are decoded and handled. */
    void waitForDecoding()
    {
        bool isDone = false;
        const auto wait = [](HubAPI& api, bool& done) -> QCoro::Task<> {
            co_await api.get<TVStatus>(u"/wait-for-decoding"_s);
            done = true;
        };
        const auto task = wait(hub, isDone);
        answer(u"/wait-for-decoding"_s, "{}");
        QTRY_VERIFY(isDone);
    }

    /** Runs one refresh to its end. */
    void loadOnce(const QStringList& titles)
    {
        const auto task = store->refresh();
        answerStatus();
        answerTapes(titles);
        QTRY_VERIFY(!store->isLoading());
    }

    QStringList titles() const
    {
        QStringList all;
        for (const Tape& tape : store->tapes())
            all.append(tape.title);
        return all;
    }

    static QByteArray statusOf(qint64 tapes)
    {
        return R"({"rewindery": {"tapes": )" + QByteArray::number(tapes) +
               R"(, "markets": [{"slug": "springfield", "tapes": 5}, {"slug": "springfield", "tapes": 6}]}})";
    }

    /** A page of tapes with these titles; the ids are 1, 2, and so on. */
    static QByteArray pageOf(const QStringList& titles)
    {
        QByteArrayList items;
        for (const QString& title : titles)
            items.append(R"({"id": )" + QByteArray::number(items.size() + 1) + R"(, "title": ")" + title.toUtf8() +
                         R"("})");
        return R"({"items": [)" + items.join(",") + "]}";
    }

private:
    int awaitRequest(const QString& path) const
    {
        if (!QTest::qWaitFor([this, &path] { return http.waitingFor(path) >= 0; }))
            qFatal("No request for %s is waiting.", qPrintable(path));
        return http.waitingFor(path);
    }
};

} // namespace quillmere
