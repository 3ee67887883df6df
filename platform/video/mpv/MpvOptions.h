#pragma once

#include "VideoEngine.h"
#include "VideoOptions.h"

#include <mpv/client.h>

/** How libmpv is set up. On the core's thread. */
namespace MpvOptions {

/** Before `mpv_initialize`; false when an option is refused, and then nothing may be played. */
bool apply(mpv_handle* mpv, const VideoOptions& options);

/** What the option "start" is for a position, in seconds from the stream's beginning. */
QByteArray startOption(double seconds);

/** Before each load: what the playlist may reach, where it starts. What to load is the answer. */
QByteArray setForLoad(mpv_handle* mpv, const VideoLoad& load);

} // namespace MpvOptions
