#pragma once

#include <chrono>

/** A way along the recording while a button is held: the longer, the faster. A plain value. */
struct Scrub
{
    double from = 0;                    ///< seconds of play time
    int direction = 1;                  ///< -1 for backward
    std::chrono::milliseconds since{0}; ///< when the button was first held, on the clock
    bool goesOn = false;                ///< it was playing, and does again when the button is let go

    /** Seconds of play time for each second; negative for backward. */
    int speedAt(std::chrono::milliseconds now) const;

    /** Where it has come to, which may lie beyond either end of the recording. */
    double positionAt(std::chrono::milliseconds now) const;
};
