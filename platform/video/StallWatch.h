#pragma once

#include "Clock.h"

/** Notices that what should move has not moved for too long. Screen thread only; a member of its player. */
class StallWatch
{
public:
    StallWatch(Clock& clock, std::chrono::seconds limit, std::function<void()> stalled)
        : m_clock(clock), m_limit(limit), m_stalled(std::move(stalled))
    {}

    /** Whether it should move; the time counts from when it began to. */
    void setWatching(bool watching);

    void moved() { m_lastMove = m_clock.elapsed(); }
    std::chrono::milliseconds sinceLastMove() const { return m_clock.elapsed() - m_lastMove; }

private:
    void wait(std::chrono::milliseconds time);
    void look();

    Clock& m_clock;
    const std::chrono::seconds m_limit;
    std::function<void()> m_stalled;
    std::unique_ptr<Clock::Timer> m_timer; ///< while watching
    std::chrono::milliseconds m_lastMove{0};
};
