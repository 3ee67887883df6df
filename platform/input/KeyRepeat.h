#pragma once

#include "Clock.h"

#include <chrono>
#include <functional>
#include <memory>

/**
 * The steps of a held button: the first 400 ms after the press, then 8 a second, and 25 a second once it has been held
 * for 2 s. A step is made only when no other event waits, so that none follows a release, however slow the screen is;
 * steps that were missed meanwhile are dropped. Screen thread only; its owner outlives it, and so does the clock.
 */
class KeyRepeat
{
public:
    KeyRepeat(Clock& clock, std::function<void()> step);

    /** A button is held from now on. */
    void press();

    /** No button is held any more. */
    void release();

    /** The release before was none: the button has been held all along. */
    void resume();

private:
    void waitForNext();
    void letInputPass();
    void step();

    Clock& m_clock;
    std::function<void()> m_step;
    std::chrono::milliseconds m_pressed{0}; ///< when, on the clock
    std::chrono::milliseconds m_next{0};    ///< when the next step falls due
    std::unique_ptr<Clock::Timer> m_timer;
};
