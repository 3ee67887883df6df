#pragma once

#include "HttpClient.h"

#include <QElapsedTimer>
#include <QTest>

#include <memory>
#include <optional>

namespace quillmere {

/** The result of a request, once it has arrived. */
struct HttpOutcome
{
    std::optional<HttpResult> result;
    qint64 milliseconds = 0; ///< how long `fetch` waited for it

    int status() const { return result && *result ? (*result)->status : 0; }
    QByteArray body() const { return result && *result ? (*result)->body : QByteArray("(no answer)"); }
    bool failedWith(HttpFailure::Kind kind) const { return result && !*result && result->error().kind == kind; }
    QString errorDescription() const
    {
        return result && !*result ? result->error().description : QStringLiteral("(no failure)");
    }
};

inline QCoro::Task<> runRequest(HttpClient& client, HttpRequest request, std::stop_token token,
                                std::shared_ptr<HttpOutcome> outcome)
{
    outcome->result = co_await client.get(std::move(request), std::move(token));
}

inline std::shared_ptr<HttpOutcome> start(HttpClient& client, const HttpRequest& request,
                                          const std::stop_token& token = {})
{
    auto outcome = std::make_shared<HttpOutcome>();
    runRequest(client, request, token, outcome);
    return outcome;
}

/** Starts the request and waits until it has finished. */
inline HttpOutcome fetch(HttpClient& client, const HttpRequest& request)
{
    QElapsedTimer timer;
    timer.start();
    const auto outcome = start(client, request);
    [&] { QTRY_VERIFY_WITH_TIMEOUT(outcome->result, 20000); }();
    outcome->milliseconds = timer.elapsed();
    return *outcome;
}

/** A request with time limits short enough for a test. */
inline HttpRequest requestTo(const QUrl& url, std::chrono::milliseconds inactivityLimit = std::chrono::seconds(5),
                             std::chrono::milliseconds overallLimit = std::chrono::seconds(10))
{
    HttpRequest request;
    request.url = url;
    request.inactivityLimit = inactivityLimit;
    request.overallLimit = overallLimit;
    return request;
}

} // namespace quillmere
