#pragma once

#include "Completion.h"
#include "HttpClient.h"

#include <QList>

namespace quillmere {

/**
 * An HTTP client without a network. Every request waits until the test answers it, in any order, or until it is
 * cancelled. Requests are numbered from 0 in the order in which they were started.
 */
class ScriptedHttpClient : public HttpClient
{
public:
    ~ScriptedHttpClient() override;

    QCoro::Task<HttpResult> get(HttpRequest request, std::stop_token token) override;

    int count() const { return int(m_calls.size()); }
    const HttpRequest& request(int call) const { return m_calls.at(call).request; }
    bool isWaiting(int call) const { return !m_calls.at(call).completion.isResolved(); }
    bool wasCancelled(int call) const { return m_calls.at(call).cancelled; }

    /** The latest waiting request for this path (with its query, if one is given); -1 if none. */
    int waitingFor(const QString& pathAndQuery) const;

    /** Answers before the call returns. */
    void answer(int call, int status, const QByteArray& body = {});
    void fail(int call, const QString& description, HttpFailure::Kind kind = HttpFailure::Kind::Network);

private:
    struct Call
    {
        HttpRequest request;
        Completion<HttpResult> completion;
        bool cancelled = false;
    };
    QList<Call> m_calls;
};

} // namespace quillmere
