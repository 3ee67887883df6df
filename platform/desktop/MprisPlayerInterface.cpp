#include "MprisPlayerInterface.h"

using namespace Qt::StringLiterals;

namespace quillmere {

QVariantMap MprisPlayerInterface::notifiedProperties() const
{
    return {
        {u"PlaybackStatus"_s, playbackStatus()},
        {u"Metadata"_s, metadata()},
        {u"CanPlay"_s, canPlay()},
        {u"CanPause"_s, canPlay()},
        {u"CanSeek"_s, canSeek()},
    };
}

QString MprisPlayerInterface::playbackStatus() const
{
    switch (m_player->state().playback) {
    case MprisState::Playback::Playing:
        return u"Playing"_s;
    case MprisState::Playback::Paused:
        return u"Paused"_s;
    case MprisState::Playback::Stopped:
        break;
    }
    return u"Stopped"_s;
}

void MprisPlayerInterface::Play()
{
    if (canPlay())
        Q_EMIT m_player->playRequested();
}

void MprisPlayerInterface::Pause()
{
    if (canPlay())
        Q_EMIT m_player->pauseRequested();
}

void MprisPlayerInterface::PlayPause()
{
    if (canPlay())
        Q_EMIT m_player->playPauseRequested();
}

void MprisPlayerInterface::Stop()
{
    Q_EMIT m_player->stopRequested();
}

void MprisPlayerInterface::Seek(qlonglong Offset)
{
    if (canSeek())
        Q_EMIT m_player->seekRequested(Offset);
}

void MprisPlayerInterface::SetPosition(const QDBusObjectPath& TrackId, qlonglong Position)
{
    // A wrong TrackId means that the request was for the previous tape.
    if (canSeek() && TrackId == m_player->trackId() && Position >= 0 && Position <= m_player->state().length)
        Q_EMIT m_player->positionRequested(Position);
}

} // namespace quillmere
