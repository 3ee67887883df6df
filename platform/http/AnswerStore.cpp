#include "AnswerStore.h"

#include <QNetworkReply>

#include <algorithm>

namespace {

constexpr qsizetype overhead = 512; // bytes an answer costs beside its body, so that small ones cannot pile up

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

std::optional<KeptAnswer> AnswerStore::find(const QUrl& url) const
{
    const KeptAnswer* const kept = m_answers.object(keyOf(url));
    return kept ? std::optional(*kept) : std::nullopt;
}

void AnswerStore::replace(const QUrl& url, const QNetworkReply& reply, int status, const QByteArray& body)
{
    // Replacing in place would count both and push out a third.
    drop(url);
    const QByteArray etag = reply.rawHeader("ETag");
    const QByteArray lastModified = reply.rawHeader("Last-Modified");
    constexpr int ok = 200;
    if (status == ok && !(etag.isEmpty() && lastModified.isEmpty()) && !forbidsStoring(reply))
        m_answers.insert(keyOf(url), new KeptAnswer{etag, lastModified, body}, body.size() + overhead);
}

void AnswerStore::drop(const QUrl& url)
{
    m_answers.remove(keyOf(url));
}
