#include "StallDetector.h"

namespace quillmere {

void StallDetector::setActive(bool active)
{
    if (active == (m_timer != nullptr))
        return;
    m_timer.reset();
    if (!active)
        return;
    onProgress();
    startTimer(m_limit);
}

void StallDetector::startTimer(std::chrono::milliseconds time)
{
    m_timer = m_clock.after(time, [this] { check(); });
}

// Progress does not restart the timer, as it may come hundreds of times within the limit.
void StallDetector::check()
{
    const auto elapsed = sinceLastProgress();
    if (elapsed < m_limit) {
        startTimer(m_limit - elapsed);
        return;
    }
    // The callback may destroy this object.
    const auto onStalled = m_onStalled;
    m_timer.reset();
    onStalled();
}

} // namespace quillmere
