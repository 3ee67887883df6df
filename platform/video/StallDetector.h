#pragma once

#include "Clock.h"

namespace quillmere {

/** Calls back if there was no progress for a time limit. Screen thread only; a member of its player. */
class StallDetector
{
public:
    StallDetector(Clock& clock, std::chrono::seconds limit, std::function<void()> onStalled)
        : m_clock(clock), m_limit(limit), m_onStalled(std::move(onStalled))
    {}

    /** Whether progress is expected. The limit counts from the moment this becomes true. */
    void setActive(bool active);

    void onProgress() { m_lastProgress = m_clock.elapsed(); }
    std::chrono::milliseconds sinceLastProgress() const { return m_clock.elapsed() - m_lastProgress; }

private:
    void startTimer(std::chrono::milliseconds time);
    void check();

    Clock& m_clock;
    const std::chrono::seconds m_limit;
    std::function<void()> m_onStalled;
    std::unique_ptr<Clock::Timer> m_timer; ///< null while inactive
    std::chrono::milliseconds m_lastProgress{0};
};

} // namespace quillmere
