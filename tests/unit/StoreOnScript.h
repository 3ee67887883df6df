#pragma once

#include "HubAPI.h"
#include "MemoryDefaults.h"
#include "ScriptedHttpClient.h"
#include "Store.h"

#include <QCoreApplication>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

/** A store with a scripted hub. Answers are decoded on another thread: tests must wait for their effect. */
struct StoreOnScript
{
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
        const bool isRequested = QTest::qWaitFor([this, &path] { return http.waitingFor(path) >= 0; });
        if (!isRequested)
            qFatal("No request for %s is waiting.", qPrintable(path));
        return http.waitingFor(path);
    }
};

/** Records a store's change signals: "will" before a change, the field and its new value after it. */
class Announcements : public QObject
{
    Q_OBJECT

public:
    explicit Announcements(const Store& store) : m_store(store), m_lastValues(currentValues())
    {
        connect(&store, &Store::objectWillChange, this, [this] {
            received.append(u"will"_s);
            wasAlwaysAnnouncedFirst = wasAlwaysAnnouncedFirst && currentValues() == m_lastValues;
        });
        connect(&store, &Store::statusChanged, this, [this] { record(u"status"_s, m_store.status().rewindery.tapes); });
        connect(&store, &Store::tapesChanged, this, [this] { record(u"tapes"_s, m_store.tapes().size()); });
        connect(&store, &Store::shelvesChanged, this, [this] { record(u"shelves"_s, m_store.shelves().size()); });
        connect(&store, &Store::isLoadingChanged, this, [this] { record(u"isLoading"_s, m_store.isLoading()); });
        connect(&store, &Store::hasLoadedOnceChanged, this,
                [this] { record(u"hasLoadedOnce"_s, m_store.hasLoadedOnce()); });
        connect(&store, &Store::lastErrorChanged, this,
                [this] { record(u"lastError"_s, m_store.lastError().value_or(u"-"_s)); });
        connect(&store, &Store::marketChanged, this, [this] { record(u"market"_s, m_store.market()); });
    }

    QStringList received;
    bool wasAlwaysAnnouncedFirst = true;

private:
    void record(const QString& field, const QVariant& value)
    {
        received.append(field + u'=' + value.toString());
        m_lastValues = currentValues();
    }

    QVariantList currentValues() const
    {
        QVariantList all{
            m_store.status().rewindery.tapes, m_store.shelves().size(), m_store.isLoading(), m_store.hasLoadedOnce(),
            m_store.lastErrorText(),          m_store.hasError(),       m_store.market()};
        for (const Tape& tape : m_store.tapes())
            all.append(tape.title);
        return all;
    }

    const Store& m_store;
    QVariantList m_lastValues;
};
