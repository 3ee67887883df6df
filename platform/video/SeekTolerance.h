#pragma once

namespace quillmere {

/** How exact a seek must be. */
enum class SeekTolerance {
    AtOrAfter, ///< at the requested position or less than a second after it
    Nearest,   ///< at a nearby position that is fast to show, before or after the requested one; for scrubbing
};

} // namespace quillmere
