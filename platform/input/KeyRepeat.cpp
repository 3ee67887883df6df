#include "KeyRepeat.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds firstStep = 400ms; // after the press
constexpr milliseconds slowPace = 125ms;
constexpr milliseconds fastFrom = 2000ms; // after the press
constexpr milliseconds fastPace = 40ms;

/** The step at or after `held`, the time since the press, of the steps begun at `from`, one each `pace`. */
constexpr milliseconds stepFrom(milliseconds held, milliseconds from, milliseconds pace)
{
    return from + std::max(0ms, (held - from + pace - 1ms) / pace * pace);
}

/** When the next step falls due after one at `held`; all are times since the press. */
constexpr milliseconds stepAfter(milliseconds held)
{
    // A late step is not followed hard by the next one, so half a pace lies between at least.
    if (held >= fastFrom)
        return stepFrom(held + fastPace / 2, fastFrom, fastPace);
    return std::min(stepFrom(held + slowPace / 2, firstStep, slowPace), fastFrom);
}

} // namespace

KeyRepeat::KeyRepeat(Clock& clock, std::function<void()> step) : m_clock(clock), m_step(std::move(step)) {}

void KeyRepeat::press()
{
    m_pressed = m_clock.elapsed();
    m_next = m_pressed + firstStep;
    waitForNext();
}

void KeyRepeat::release()
{
    m_timer.reset();
}

void KeyRepeat::resume()
{
    waitForNext();
}

void KeyRepeat::waitForNext()
{
    m_timer = m_clock.after(m_next - m_clock.elapsed(), [this] { letInputPass(); });
}

/** After a slow frame the timer fires before the release that came meanwhile is read; one without delay fires after. */
void KeyRepeat::letInputPass()
{
    m_timer = m_clock.after(0ms, [this] { step(); });
}

void KeyRepeat::step()
{
    m_next = m_pressed + stepAfter(m_clock.elapsed() - m_pressed);
    waitForNext();
    m_step();
}
