#pragma once

#include "HubAPI.h"
#include "PendingResult.h"
#include "ScriptedHttpClient.h"

#include <QCoreApplication>
#include <QTest>

#include <memory>

namespace quillmere {

using namespace Qt::StringLiterals;

template<typename T>
bool isFinished(const PendingResult<T>& result)
{
    return result->has_value();
}

/** "pending", "success", or the error text for the viewer. */
template<typename T>
QString outcome(const PendingResult<HubResult<T>>& result)
{
    if (!isFinished(result))
        return u"pending"_s;
    return **result ? u"success"_s : (*result)->error().errorDescription();
}

inline const QString unreadableText = u"The hub sent something this app couldn't read."_s;
inline const QString cancelledText = u"The request was called off."_s;
inline const QString statusPath = u"/api/tv/status"_s;

/** Base class of tests that use the hub client. Each test function has a new client on a scripted network. */
class HubFixture : public QObject
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
        // Processes results that the decoding thread has posted; the client no longer exists.
        QCoreApplication::processEvents();
    }
};

} // namespace quillmere
