#include "ResponseCache.h"

#include <QNetworkReply>

#include <algorithm>

namespace quillmere {

namespace {

constexpr qsizetype overhead = 512; // bytes counted for a response besides its body; bounds the number of small ones

bool forbidsStoring(const QNetworkReply& reply)
{
    const auto directives = reply.rawHeader("Cache-Control").toLower().split(',');
    return std::any_of(directives.begin(), directives.end(),
                       [](const QByteArray& directive) { return directive.trimmed() == "no-store"; });
}

QUrl keyOf(const QUrl& url)
{
    return url.adjusted(QUrl::RemoveFragment);
}

} // namespace

std::optional<CachedResponse> ResponseCache::find(const QUrl& url) const
{
    const CachedResponse* const response = m_responses.object(keyOf(url));
    return response ? std::optional(*response) : std::nullopt;
}

void ResponseCache::update(const QUrl& url, const QNetworkReply& reply, int status, const QByteArray& body)
{
    // If QCache replaced the entry itself, it would count both sizes at once and could evict another entry.
    remove(url);
    const QByteArray etag = reply.rawHeader("ETag");
    const QByteArray lastModified = reply.rawHeader("Last-Modified");
    constexpr int ok = 200;
    if (status == ok && !(etag.isEmpty() && lastModified.isEmpty()) && !forbidsStoring(reply))
        m_responses.insert(keyOf(url), new CachedResponse{etag, lastModified, body}, body.size() + overhead);
}

void ResponseCache::remove(const QUrl& url)
{
    m_responses.remove(keyOf(url));
}

} // namespace quillmere
