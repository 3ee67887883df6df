#pragma once

#include <QByteArray>
#include <QCache>
#include <QUrl>

#include <optional>

class QNetworkReply;

/** A body that may be shown again once the server has confirmed it. */
struct KeptAnswer
{
    QByteArray etag;         ///< as the server sent it; may be empty
    QByteArray lastModified; ///< as the server sent it; may be empty, but not both
    QByteArray body;
};

/** Answers to be revalidated, in memory only, the least used going first. It lives on the network thread. */
class AnswerStore
{
public:
    static constexpr qsizetype capacity = 8 * 1024 * 1024; ///< bytes

    AnswerStore() : m_answers(capacity) {}

    std::optional<KeptAnswer> find(const QUrl& url) const;

    /** Keeps the answer in place of an older one if it may be kept (200, a validator, no "no-store"); else drops both. */
    void replace(const QUrl& url, const QNetworkReply& reply, int status, const QByteArray& body);

    void drop(const QUrl& url);

private:
    QCache<QUrl, KeptAnswer> m_answers;
};
