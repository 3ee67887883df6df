#include "StallWatch.h"

void StallWatch::setWatching(bool watching)
{
    if (watching == (m_timer != nullptr))
        return;
    m_timer.reset();
    if (!watching)
        return;
    moved();
    wait(m_limit);
}

void StallWatch::wait(std::chrono::milliseconds time)
{
    m_timer = m_clock.after(time, [this] { look(); });
}

// One timer for all the moves until the limit, which may be hundreds.
void StallWatch::look()
{
    const auto still = sinceLastMove();
    if (still < m_limit) {
        wait(m_limit - still);
        return;
    }
    // What is told may end this object.
    const auto stalled = m_stalled;
    m_timer.reset();
    stalled();
}
