#include "PlayerItem.h"

namespace quillmere {

QString PlayerItem::metadata(MetadataItem::Identifier identifier) const
{
    for (const MetadataItem& item : m_externalMetadata) {
        if (item.identifier == identifier)
            return item.value;
    }
    return {};
}

void PlayerItem::setReadyToPlay()
{
    setStatus(Status::ReadyToPlay);
}

void PlayerItem::setFailed(const VideoFailure& failure)
{
    if (failure.cause != VideoFailure::Cause::Unknown)
        m_error = failure;
    setStatus(Status::Failed);
}

void PlayerItem::setPlayedToEnd()
{
    Q_EMIT didPlayToEnd();
}

void PlayerItem::setStatus(Status status)
{
    if (m_status == status || m_status == Status::Failed)
        return;
    m_status = status;
    Q_EMIT statusChanged();
}

} // namespace quillmere
