#pragma once

#include <QString>

namespace quillmere {

/** State of the player as published by MPRIS. Times are in microseconds; texts may have any length. */
struct MprisState
{
    enum class Playback { Playing, Paused, Stopped };

    Playback playback = Playback::Stopped;
    bool canPlay = false;
    bool canSeek = false;
    qint64 length = 0; ///< 0 if unknown
    QString title;
    QString subtitle;
    QString description;
    QString publisher;

    bool operator==(const MprisState&) const = default;
};

} // namespace quillmere
