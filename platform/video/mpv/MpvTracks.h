#pragma once

#include "MediaTrack.h"

#include <QList>

#include <mpv/client.h>

namespace quillmere::MpvTracks {

/** The audio and subtitle tracks of libmpv's property "track-list", in its order. Any thread. */
QList<MediaTrack> read(const mpv_node& list);

/** The name of the option that selects a track of this kind. */
const char* option(MediaTrack::Kind kind);

/** Whether the selected subtitles have their own playlist. */
bool isSubtitlePlaylist(mpv_handle* mpv);

} // namespace quillmere::MpvTracks
