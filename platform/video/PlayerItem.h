#pragma once

#include "MetadataItem.h"
#include "VideoFailure.h"

#include <QList>
#include <QObject>
#include <QUrl>

#include <optional>

namespace quillmere {

/**
 * A stream to be played, and its playback status. Screen thread only. Its creator shares it with one player, which
 * keeps a reference until it gets another item or none.
 */
class PlayerItem : public QObject
{
    Q_OBJECT

public:
    enum class Kind {
        Recording, ///< has an end and is seekable
        Live       ///< plays at the live edge, until the player gets another item or none
    };
    enum class Status {
        Unknown,     ///< no picture shown yet
        ReadyToPlay, ///< the first picture was shown
        Failed       ///< final; `error` may contain the cause
    };
    Q_ENUM(Status)

    explicit PlayerItem(QUrl url, Kind kind = Kind::Recording) : m_url(std::move(url)), m_kind(kind) {}

    const QUrl& url() const { return m_url; }
    bool isLive() const { return m_kind == Kind::Live; }

    /** Metadata that does not come from the stream itself; set before the item is played. */
    const QList<MetadataItem>& externalMetadata() const { return m_externalMetadata; }
    void setExternalMetadata(QList<MetadataItem> items) { m_externalMetadata = std::move(items); }

    /** Value of the first metadata item with this identifier; empty if there is none. */
    QString metadata(MetadataItem::Identifier identifier) const;

    Status status() const { return m_status; }

    /** Why it failed; none if it has not failed or if the cause is unknown. */
    const std::optional<VideoFailure>& error() const { return m_error; }

    // Called only by the player of this item.
    void setReadyToPlay();
    void setFailed(const VideoFailure& failure);
    void setPlayedToEnd();

Q_SIGNALS:
    void statusChanged();

    /** Played to its end: the data ended when the position was at most 2 seconds before the duration. */
    void didPlayToEnd();

private:
    void setStatus(Status status);

    QUrl m_url;
    Kind m_kind;
    QList<MetadataItem> m_externalMetadata;
    Status m_status = Status::Unknown;
    std::optional<VideoFailure> m_error;
};

} // namespace quillmere
