#pragma once

#include <QByteArray>
#include <QCache>
#include <QUrl>

#include <optional>

class QNetworkReply;

namespace quillmere {

/** A body that may be used again after the server has confirmed it (304 Not Modified). */
struct CachedResponse
{
    QByteArray etag;         ///< as the server sent it; may be empty
    QByteArray lastModified; ///< as the server sent it; may be empty, but not both
    QByteArray body;
};

/** In-memory cache of responses for revalidation; drops the least recently used. Network thread only. */
class ResponseCache
{
public:
    static constexpr qsizetype capacity = 8 * 1024 * 1024; ///< bytes

    ResponseCache() : m_responses(capacity) {}

    std::optional<CachedResponse> find(const QUrl& url) const;

    /**
     * Replaces the cached response for `url` by this one if it is cacheable: status 200, with a validator, without
     * "no-store". Otherwise only removes the cached response.
     */
    void update(const QUrl& url, const QNetworkReply& reply, int status, const QByteArray& body);

    void remove(const QUrl& url);

private:
    QCache<QUrl, CachedResponse> m_responses;
};

} // namespace quillmere
