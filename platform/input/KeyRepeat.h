#pragma once

#include "Clock.h"

#include <chrono>
#include <functional>
#include <memory>

namespace quillmere {

/**
 * Auto-repeat of a held button: the first step 400 ms after the press, then 8 steps a second, and 25 a second from 2
 * seconds on. A step is delivered only when no other event is pending, so that none follows the release, however slow
 * rendering is. Steps missed in that time are dropped. Screen thread only; its owner and the clock outlive it.
 */
class KeyRepeat
{
public:
    KeyRepeat(Clock& clock, std::function<void()> step);

    /** A button was pressed: starts the repeat. */
    void press();

    /** The button was released: stops the repeat. */
    void release();

    /** Continues the repeat: the last release was part of the system's auto-repeat, the button is still held. */
    void resume();

private:
    void startTimer();
    void deferStep();
    void step();

    Clock& m_clock;
    std::function<void()> m_step;
    std::chrono::milliseconds m_pressedAt{0}; ///< clock time of the press
    std::chrono::milliseconds m_nextAt{0};    ///< clock time of the next step
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace quillmere
