#include "StallWatch.h"

namespace {

constexpr std::chrono::seconds limit{12};

} // namespace

void StallWatch::setWatching(bool watching)
{
    if (watching == (m_timer != nullptr))
        return;
    m_timer.reset();
    if (!watching)
        return;
    positionMoved();
    wait(limit);
}

void StallWatch::wait(std::chrono::milliseconds time)
{
    m_timer = m_clock.after(time, [this] { look(); });
}

// One timer for all the moves of 12 seconds, which may be hundreds.
void StallWatch::look()
{
    const auto still = m_clock.elapsed() - m_lastMove;
    if (still < limit) {
        wait(limit - still);
        return;
    }
    // What is told may end this object.
    const auto stalled = m_stalled;
    m_timer.reset();
    stalled();
}
