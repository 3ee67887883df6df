#pragma once

#include "HttpClient.h"

#include <QTest>

#include <memory>
#include <optional>

/** A request's answer, once it is there. */
struct HttpOutcome
{
    std::optional<HttpResult> result;

    int status() const { return result && *result ? (*result)->status : 0; }
    QByteArray body() const { return result && *result ? (*result)->body : QByteArray("(no answer)"); }
    bool failedAs(HttpFailure::Kind kind) const { return result && !*result && result->error().kind == kind; }
    QString words() const { return result && !*result ? result->error().description : QStringLiteral("(no failure)"); }
};

inline QCoro::Task<> ask(HttpClient& client, HttpRequest request, CancelToken token,
                         std::shared_ptr<HttpOutcome> outcome)
{
    outcome->result = co_await client.get(std::move(request), std::move(token));
}

inline std::shared_ptr<HttpOutcome> start(HttpClient& client, const HttpRequest& request, const CancelToken& token = {})
{
    auto outcome = std::make_shared<HttpOutcome>();
    ask(client, request, token, outcome);
    return outcome;
}

/** Starts the request and waits for its end. */
inline HttpOutcome fetch(HttpClient& client, const HttpRequest& request)
{
    const auto outcome = start(client, request);
    [&] { QTRY_VERIFY_WITH_TIMEOUT(outcome->result, 20000); }();
    return *outcome;
}

/** A request with limits short enough for a test. */
inline HttpRequest to(const QUrl& url)
{
    HttpRequest request;
    request.url = url;
    request.inactivityLimit = std::chrono::seconds(5);
    request.overallLimit = std::chrono::seconds(10);
    return request;
}
