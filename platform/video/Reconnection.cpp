#include "Reconnection.h"

#include <algorithm>
#include <array>

using namespace std::chrono_literals;

namespace {

constexpr std::array<std::chrono::seconds, 4> delays{1s, 2s, 4s, 8s};
constexpr std::chrono::seconds liveDelay = 8s;

// A stream that breaks at the same place each time may show a little of it each time.
constexpr double progress = 2;

} // namespace

void Reconnection::begin(bool isLive)
{
    cancel();
    forgetBreaks();
    m_isLive = isLive;
}

bool Reconnection::planAfterBreakAt(double position)
{
    if (m_breaks == delays.size() && !m_isLive)
        return false;
    const auto delay = m_isLive ? liveDelay : delays.at(m_breaks);
    m_furthest = m_breaks > 0 ? std::max(m_furthest, position) : position;
    m_breaks = std::min(m_breaks + 1, delays.size());
    m_timer = m_clock.after(delay, [this] {
        // The attempt may end this object.
        const auto attempt = m_attempt;
        m_timer.reset();
        attempt();
    });
    return true;
}

void Reconnection::reached(double position)
{
    if (position >= m_furthest + progress)
        forgetBreaks();
}
