#pragma once

#include "Clock.h"

namespace quillmere {

/**
 * Schedules the attempts to reconnect a broken stream: a recording 1, 2, 4 and 8 seconds after each break in a row,
 * then no more; a live stream every 8 seconds without limit. Screen thread only; a member of its player.
 */
class ReconnectSchedule
{
public:
    ReconnectSchedule(Clock& clock, std::function<void()> reconnect) : m_clock(clock), m_reconnect(std::move(reconnect))
    {}

    /** Cancels the scheduled attempt and resets the count, for another item. */
    void reset(bool isLive);

    /** Schedules the next attempt after a break at this position, in seconds; false if no attempt is left. */
    [[nodiscard]] bool schedule(double breakPosition);

    /** Playback has reached this position, in seconds. Resets the count 2 seconds beyond the furthest break. */
    void onPositionReached(double position);

    /** Resets the count of attempts, for instance after a seek by the viewer. */
    void resetAttempts() { m_attempts = 0; }

    void cancel() { m_timer.reset(); }

private:
    Clock& m_clock;
    std::function<void()> m_reconnect;
    std::unique_ptr<Clock::Timer> m_timer;
    bool m_isLive = false;
    size_t m_attempts = 0;
    double m_furthestBreak = 0;
};

} // namespace quillmere
