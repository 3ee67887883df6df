#pragma once

#include "HubAPI.h"
#include "ScriptedHttpClient.h"

#include <QCoreApplication>
#include <QTest>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

template<typename T>
using Kept = std::shared_ptr<std::optional<T>>;

template<typename T>
QCoro::Task<> keep(QCoro::Task<T> task, Kept<T> kept)
{
    *kept = co_await task;
}

/** The task's result, once it is there. */
template<typename T>
Kept<T> kept(QCoro::Task<T> task)
{
    auto result = std::make_shared<std::optional<T>>();
    keep(std::move(task), result);
    return result;
}

template<typename T>
bool isThere(const Kept<T>& kept)
{
    return kept->has_value();
}

/** The viewer's text of a fetch that failed; empty when it did not. */
template<typename T>
QString failure(const Kept<HubResult<T>>& kept)
{
    return **kept ? QString() : (*kept)->error().errorDescription();
}

inline const QString unreadable = u"The hub sent something this app couldn't read."_s;
inline const QString calledOff = u"The request was called off."_s;
inline const QString statusPath = u"/api/tv/status"_s;

/** A test whose every function has a fresh client of the hub, on a network that answers what and when it says. */
class HubOnScript : public QObject
{
    Q_OBJECT

protected:
    std::unique_ptr<ScriptedHttpClient> m_http;
    std::unique_ptr<HubAPI> m_hub;

private Q_SLOTS:
    void init()
    {
        m_http = std::make_unique<ScriptedHttpClient>();
        m_hub = std::make_unique<HubAPI>(*m_http, QUrl(u"https://hub.test"_s));
    }

    void cleanup()
    {
        m_hub.reset();
        m_http.reset();
        // What the decoding thread still had to say arrives now, and finds nobody.
        QCoreApplication::processEvents();
    }
};
