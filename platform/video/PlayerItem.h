#pragma once

#include "MetadataItem.h"
#include "VideoFailure.h"

#include <QList>
#include <QObject>
#include <QUrl>

#include <optional>

/**
 * One stream to be played, and what has become of it. Screen thread only. Whoever wants it played makes it and shares it
 * with one player, which holds it until it is given another or none.
 */
class PlayerItem : public QObject
{
    Q_OBJECT

public:
    enum class Kind {
        Recording, ///< has an end, and can be sought
        Live       ///< is watched at its live edge, and ends when it is let go
    };
    enum class Status {
        Unknown,     ///< no picture yet
        ReadyToPlay, ///< the first picture has been there
        Failed       ///< for good; `error` may tell why
    };
    Q_ENUM(Status)

    explicit PlayerItem(QUrl url, Kind kind = Kind::Recording) : m_url(std::move(url)), m_kind(kind) {}

    const QUrl& url() const { return m_url; }
    bool isLive() const { return m_kind == Kind::Live; }

    /** What is known about the stream from elsewhere; set before the item is played. */
    const QList<MetadataItem>& externalMetadata() const { return m_externalMetadata; }
    void setExternalMetadata(QList<MetadataItem> items) { m_externalMetadata = std::move(items); }

    /** The value of the first metadata item with this identifier, else empty. */
    QString metadata(MetadataItem::Identifier identifier) const;

    Status status() const { return m_status; }

    /** Why it failed; none before that, and none when the cause is unknown. */
    const std::optional<VideoFailure>& error() const { return m_error; }

    // Told by the player that plays it.
    void setReadyToPlay();
    void setFailed(const VideoFailure& failure);
    void setPlayedToEnd();

Q_SIGNALS:
    void statusChanged();

    /** Played to its end: the position had come within 2 seconds of the duration. */
    void didPlayToEnd();

private:
    void setStatus(Status status);

    QUrl m_url;
    Kind m_kind;
    QList<MetadataItem> m_externalMetadata;
    Status m_status = Status::Unknown;
    std::optional<VideoFailure> m_error;
};
