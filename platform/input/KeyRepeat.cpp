#include "KeyRepeat.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace quillmere {

using std::chrono::milliseconds;

namespace {

constexpr milliseconds firstDelay = 400ms; // after the press
constexpr milliseconds slowInterval = 125ms;
constexpr milliseconds fastFrom = 2000ms; // after the press
constexpr milliseconds fastInterval = 40ms;

/** The first step at or after `sincePress`, of steps every `interval` from `from` on. All are times since the press. */
constexpr milliseconds stepFrom(milliseconds sincePress, milliseconds from, milliseconds interval)
{
    return from + std::max(0ms, (sincePress - from + interval - 1ms) / interval * interval);
}

/** Time of the next step after one at `sincePress`, both since the press. */
constexpr milliseconds stepAfter(milliseconds sincePress)
{
    // After a late step, the next one comes at least half an interval later.
    if (sincePress >= fastFrom)
        return stepFrom(sincePress + fastInterval / 2, fastFrom, fastInterval);
    return std::min(stepFrom(sincePress + slowInterval / 2, firstDelay, slowInterval), fastFrom);
}

} // namespace

KeyRepeat::KeyRepeat(Clock& clock, std::function<void()> step) : m_clock(clock), m_step(std::move(step)) {}

void KeyRepeat::press()
{
    m_pressedAt = m_clock.elapsed();
    m_nextAt = m_pressedAt + firstDelay;
    startTimer();
}

void KeyRepeat::release()
{
    m_timer.reset();
}

void KeyRepeat::resume()
{
    startTimer();
}

void KeyRepeat::startTimer()
{
    m_timer = m_clock.after(m_nextAt - m_clock.elapsed(), [this] { deferStep(); });
}

/** After a slow frame, the timer may fire before a pending release is processed. A timer of 0 ms fires after it. */
void KeyRepeat::deferStep()
{
    m_timer = m_clock.after(0ms, [this] { step(); });
}

void KeyRepeat::step()
{
    m_nextAt = m_pressedAt + stepAfter(m_clock.elapsed() - m_pressedAt);
    startTimer();
    m_step();
}

} // namespace quillmere
