#pragma once

#include <QString>

/** What other programs are told about the player. A plain value; texts may be of any length, times are microseconds. */
struct MprisState
{
    enum class Playback { Playing, Paused, Stopped };

    Playback playback = Playback::Stopped;
    bool canPlay = false;
    bool canSeek = false;
    qint64 length = 0; ///< 0 while it is not known
    QString title;
    QString subtitle;
    QString description;
    QString publisher;

    bool operator==(const MprisState&) const = default;
};
