#pragma once

namespace quillmere {

/**
 * Redirects the messages of the ALSA library from standard error to the log category `quillmere.video`, if libmpv has
 * loaded that library. Call it once, before anything plays. Any thread.
 */
void logAlsaMessages();

} // namespace quillmere
