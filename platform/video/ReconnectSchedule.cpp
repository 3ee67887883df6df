#include "ReconnectSchedule.h"

#include <algorithm>
#include <array>

using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr std::array<std::chrono::seconds, 4> delays{1s, 2s, 4s, 8s};
constexpr std::chrono::seconds liveDelay = 8s;

// Seconds. A stream that always breaks at the same position may play a little beyond it each time.
constexpr double requiredProgress = 2;

} // namespace

void ReconnectSchedule::reset(bool isLive)
{
    cancel();
    resetAttempts();
    m_isLive = isLive;
}

bool ReconnectSchedule::schedule(double breakPosition)
{
    if (m_attempts == delays.size() && !m_isLive)
        return false;
    const auto delay = m_isLive ? liveDelay : delays.at(m_attempts);
    m_furthestBreak = m_attempts > 0 ? std::max(m_furthestBreak, breakPosition) : breakPosition;
    m_attempts = std::min(m_attempts + 1, delays.size());
    m_timer = m_clock.after(delay, [this] {
        // The callback may destroy this object.
        const auto reconnect = m_reconnect;
        m_timer.reset();
        reconnect();
    });
    return true;
}

void ReconnectSchedule::onPositionReached(double position)
{
    if (position >= m_furthestBreak + requiredProgress)
        resetAttempts();
}

} // namespace quillmere
