#pragma once

#include "CancelToken.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <chrono>
#include <tl/expected.hpp>

/** One GET. */
struct HttpRequest
{
    enum class Cache {
        Revalidate, ///< a kept answer is used again only when the server confirms it
        Bypass      ///< nothing kept is used, sent or stored
    };

    enum class Body {
        Read,
        Ignore ///< the answer is there with its head, and has no body
    };

    QUrl url;
    Body body = Body::Read;
    Cache cache = Cache::Revalidate;
    std::chrono::milliseconds inactivityLimit{20'000}; ///< longest time without a byte
    std::chrono::milliseconds overallLimit{60'000};    ///< longest time in all, waiting for the network included
    qint64 maxBytes = 16 * 1024 * 1024;                ///< of the body, after decompression
};

/** An answer of the server's, whatever its status; redirects are followed before, and interim statuses skipped. */
struct HttpResponse
{
    int status = 0;
    QByteArray body; ///< empty unless the status is one of success (200 to 299)
};

/** Why there is no answer. */
struct HttpFailure
{
    enum class Kind {
        Cancelled,
        TimedOut,
        TooLarge,
        CutShort,   ///< a packed body that ended before its own end
        Unreadable, ///< a body that cannot be unpacked
        Network     ///< anything else that the platform reports
    };

    Kind kind = Kind::Network;
    QString description; ///< the platform's own words where the kind is Network, otherwise empty
};

using HttpResult = tl::expected<HttpResponse, HttpFailure>;

/**
 * The HTTP stack. Screen thread only; it outlives the requests made with it. Destroying it fails those still waiting
 * (Cancelled).
 */
class HttpClient
{
public:
    virtual ~HttpClient() = default;

    /** Answers on the screen thread. Cancelling the token aborts the request, which then fails inside the cancelling call. */
    virtual QCoro::Task<HttpResult> get(HttpRequest request, CancelToken token) = 0;
};
