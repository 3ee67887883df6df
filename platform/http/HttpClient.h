#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <chrono>
#include <stop_token>
#include <tl/expected.hpp>

namespace quillmere {

/** One GET. */
struct HttpRequest
{
    enum class Cache {
        Revalidate, ///< a cached response is used only after the server has confirmed it
        Bypass      ///< the cache is neither read nor written
    };

    enum class Body {
        Read,
        Ignore ///< the request finishes with the response headers; the body stays empty
    };

    QUrl url;
    Body body = Body::Read;
    Cache cache = Cache::Revalidate;
    std::chrono::milliseconds inactivityLimit{20'000}; ///< longest time without receiving a byte
    std::chrono::milliseconds overallLimit{60'000};    ///< longest total time, including the wait for the network
    qint64 maxBytes = 16 * 1024 * 1024;                ///< longest body, after decompression
};

/** The final response, with any status. Redirects have been followed and interim responses skipped. */
struct HttpResponse
{
    int status = 0;
    QByteArray body; ///< empty unless the status is a success (200 to 299)
};

/** Why there is no response. */
struct HttpFailure
{
    enum class Kind {
        Cancelled,
        TimedOut,
        TooLarge,
        Truncated,  ///< the gzip body ended too early
        Unreadable, ///< the body is not valid gzip
        Network     ///< any other error that Qt reports
    };

    Kind kind = Kind::Network;
    QString description; ///< Qt's error text if the kind is Network, otherwise empty
};

using HttpResult = tl::expected<HttpResponse, HttpFailure>;

/**
 * Sends HTTP requests. Screen thread only. Must outlive whoever uses it. Destroying it makes the pending requests fail
 * (Cancelled).
 */
class HttpClient
{
public:
    virtual ~HttpClient() = default;

    /**
     * Completes on the screen thread. Cancelling the token aborts the request; the task then fails inside that call.
     */
    virtual QCoro::Task<HttpResult> get(HttpRequest request, std::stop_token token) = 0;
};

} // namespace quillmere
