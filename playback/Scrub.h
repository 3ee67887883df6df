#pragma once

#include <chrono>

namespace quillmere {

/** A scrub along the recording while a key is held: the longer it is held, the faster it moves. A plain value. */
struct Scrub
{
    double startPosition = 0;               ///< seconds of play time
    int direction = 1;                      ///< -1 for backward
    std::chrono::milliseconds startTime{0}; ///< when the scrub started, as Clock::elapsed()
    bool wasPlaying = false;                ///< before the scrub; then it plays again afterwards

    /** Seconds of play time per second; negative for backward. */
    int speedAt(std::chrono::milliseconds now) const;

    /** Seconds of play time; may be before the start or after the end of the recording. */
    double positionAt(std::chrono::milliseconds now) const;
};

} // namespace quillmere
