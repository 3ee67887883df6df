#include "ScriptedHttpClient.h"

namespace quillmere {

ScriptedHttpClient::~ScriptedHttpClient()
{
    for (const Call& call : QList<Call>(m_calls))
        call.completion.resolve(tl::unexpected(HttpFailure{HttpFailure::Kind::Cancelled, {}}));
}

QCoro::Task<HttpResult> ScriptedHttpClient::get(HttpRequest request, std::stop_token token)
{
    const Completion<HttpResult> completion;
    const int call = count();
    m_calls.append({std::move(request), completion, false});
    const std::stop_callback registration(token, [this, completion, call] {
        m_calls[call].cancelled = true;
        completion.resolve(tl::unexpected(HttpFailure{HttpFailure::Kind::Cancelled, {}}));
    });
    co_return co_await completion;
}

int ScriptedHttpClient::waitingFor(const QString& pathAndQuery) const
{
    for (int call = count() - 1; call >= 0; --call) {
        const QUrl& url = m_calls.at(call).request.url;
        const QString path = url.path(QUrl::FullyEncoded);
        const QString whole = url.hasQuery() ? path + u'?' + url.query(QUrl::FullyEncoded) : path;
        if (isWaiting(call) && (whole == pathAndQuery || path == pathAndQuery))
            return call;
    }
    return -1;
}

void ScriptedHttpClient::answer(int call, int status, const QByteArray& body)
{
    const auto completion = m_calls.at(call).completion;
    completion.resolve(HttpResponse{status, body});
}

void ScriptedHttpClient::fail(int call, const QString& description, HttpFailure::Kind kind)
{
    const auto completion = m_calls.at(call).completion;
    completion.resolve(tl::unexpected(HttpFailure{kind, description}));
}

} // namespace quillmere
