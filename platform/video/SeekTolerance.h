#pragma once

/** Where a seek may land. */
enum class SeekTolerance {
    AtOrAfter, ///< not before the position, and less than a second after it
    Nearest,   ///< wherever it is fast, before or after the position; for scrubbing
};
