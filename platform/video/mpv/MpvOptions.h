#pragma once

#include "VideoEngine.h"
#include "VideoOptions.h"

#include <mpv/client.h>

/** Options of libmpv. Only on the core's thread. */
namespace quillmere::MpvOptions {

/** Before `mpv_initialize`. False if an option is refused; then nothing may be played. */
bool apply(mpv_handle* mpv, const VideoOptions& options);

/** Value of the option "start" for a position in seconds from the beginning of the stream. */
QByteArray startOption(double seconds);

/** Before each load, sets the allowed protocols, the start position and the track defaults. Returns the URL to load. */
QByteArray setForLoad(mpv_handle* mpv, const VideoLoad& load);

} // namespace quillmere::MpvOptions
