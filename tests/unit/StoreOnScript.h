#pragma once

#include "HubAPI.h"
#include "MemoryDefaults.h"
#include "ScriptedHttpClient.h"
#include "Store.h"

#include <QCoreApplication>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

/** A store whose hub answers what and when the test says. The answers are decoded on a thread: wait for their effect. */
struct StoreOnScript
{
    ScriptedHttpClient http;
    HubAPI hub{http, QUrl(u"https://hub.example"_s)};
    MemoryDefaults defaults;
    std::unique_ptr<Store> store = std::make_unique<Store>(hub, defaults);

    Store* operator->() const { return store.get(); }

    /** Answers the latest request for `path` once there is one. */
    void answer(const QString& path, const QByteArray& body, int status = 200)
    {
        http.answer(awaited(path), status, body);
    }
    void fail(const QString& path, const QString& description) { http.fail(awaited(path), description); }

    void answerStatus(qint64 tapes = 7) { answer(u"/api/tv/status"_s, statusOf(tapes)); }
    void answerTapes(const QStringList& titles, const QString& path = u"/api/tv/tapes"_s)
    {
        answer(path, pageOf(titles));
    }

    /** Runs the hub's decoding of all that has been answered so far, and what follows from it, to its end. */
    void settle()
    {
        bool isDone = false;
        const auto wait = [](HubAPI& api, bool& done) -> QCoro::Task<> {
            co_await api.get<TVStatus>(u"/settle"_s);
            done = true;
        };
        const auto task = wait(hub, isDone);
        answer(u"/settle"_s, "{}");
        QTRY_VERIFY(isDone);
    }

    /** A refresh from its beginning to its end. */
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

    /** A page of tapes with these titles, their ids counted from 1. */
    static QByteArray pageOf(const QStringList& titles)
    {
        QByteArrayList items;
        for (const QString& title : titles)
            items.append(R"({"id": )" + QByteArray::number(items.size() + 1) + R"(, "title": ")" + title.toUtf8() +
                         R"("})");
        return R"({"items": [)" + items.join(",") + "]}";
    }

private:
    int awaited(const QString& path) const
    {
        const bool isThere = QTest::qWaitFor([this, &path] { return http.waitingFor(path) >= 0; });
        if (!isThere)
            qFatal("No request for %s is waiting.", qPrintable(path));
        return http.waitingFor(path);
    }
};

/** What a store announced: "will" before a change, the field and its new value after it. */
class Announcements : public QObject
{
    Q_OBJECT

public:
    explicit Announcements(const Store& store) : m_store(store), m_seen(everything())
    {
        connect(&store, &Store::objectWillChange, this, [this] {
            heard.append(u"will"_s);
            wasAlwaysBefore = wasAlwaysBefore && everything() == m_seen;
        });
        connect(&store, &Store::statusChanged, this, [this] { note(u"status"_s, m_store.status().rewindery.tapes); });
        connect(&store, &Store::tapesChanged, this, [this] { note(u"tapes"_s, m_store.tapes().size()); });
        connect(&store, &Store::shelvesChanged, this, [this] { note(u"shelves"_s, m_store.shelves().size()); });
        connect(&store, &Store::isLoadingChanged, this, [this] { note(u"isLoading"_s, m_store.isLoading()); });
        connect(&store, &Store::hasLoadedOnceChanged, this,
                [this] { note(u"hasLoadedOnce"_s, m_store.hasLoadedOnce()); });
        connect(&store, &Store::lastErrorChanged, this,
                [this] { note(u"lastError"_s, m_store.lastError().value_or(u"-"_s)); });
        connect(&store, &Store::marketChanged, this, [this] { note(u"market"_s, m_store.market()); });
    }

    QStringList heard;
    bool wasAlwaysBefore = true;

private:
    void note(const QString& field, const QVariant& value)
    {
        heard.append(field + u'=' + value.toString());
        m_seen = everything();
    }

    QVariantList everything() const
    {
        QVariantList all{
            m_store.status().rewindery.tapes, m_store.shelves().size(), m_store.isLoading(), m_store.hasLoadedOnce(),
            m_store.lastErrorText(),          m_store.hasError(),       m_store.market()};
        for (const Tape& tape : m_store.tapes())
            all.append(tape.title);
        return all;
    }

    const Store& m_store;
    QVariantList m_seen;
};
