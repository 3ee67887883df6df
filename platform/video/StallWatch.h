#pragma once

#include "Clock.h"

/** Notices that a position which should move has not moved for 12 seconds. Screen thread only; a member of its player. */
class StallWatch
{
public:
    StallWatch(Clock& clock, std::function<void()> stalled) : m_clock(clock), m_stalled(std::move(stalled)) {}

    /** Whether the position should move; the time counts from when it began to. */
    void setWatching(bool watching);

    void positionMoved() { m_lastMove = m_clock.elapsed(); }

private:
    void wait(std::chrono::milliseconds time);
    void look();

    Clock& m_clock;
    std::function<void()> m_stalled;
    std::unique_ptr<Clock::Timer> m_timer; ///< while watching
    std::chrono::milliseconds m_lastMove{0};
};
