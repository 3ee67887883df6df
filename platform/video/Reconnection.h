#pragma once

#include "Clock.h"

/**
 * When a broken stream is tried again: 1, 2, 4 and 8 seconds after it broke, then no more; a live one every 8 seconds for
 * ever. Screen thread only; a member of its player.
 */
class Reconnection
{
public:
    Reconnection(Clock& clock, std::function<void()> attempt) : m_clock(clock), m_attempt(std::move(attempt)) {}

    /** Another item: nothing is tried, and nothing has broken yet. */
    void begin(bool isLive);

    /** Plans the next attempt; false when there is none left. */
    [[nodiscard]] bool planAfterBreakAt(double position);

    /** Playback has come here: 2 seconds beyond the furthest break, the count starts anew. */
    void reached(double position);

    /** Playback goes on elsewhere, where the viewer wanted it: the count starts anew. */
    void forgetBreaks() { m_breaks = 0; }

    void cancel() { m_timer.reset(); }

private:
    Clock& m_clock;
    std::function<void()> m_attempt;
    std::unique_ptr<Clock::Timer> m_timer;
    bool m_isLive = false;
    size_t m_breaks = 0;
    double m_furthest = 0;
};
