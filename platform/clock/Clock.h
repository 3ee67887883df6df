#pragma once

#include <QDateTime>

#include <chrono>
#include <functional>
#include <memory>

/**
 * The time, as everything in the set reads it: countdown, ticker, watch and timers. Screen thread only.
 * It outlives everything that was given it.
 */
class Clock
{
public:
    /** A pending call; letting it go takes the call back. */
    class Timer
    {
    public:
        virtual ~Timer() = default;
    };

    virtual ~Clock() = default;

    /** The wall clock's time; it may jump. */
    virtual QDateTime now() const = 0;

    /** Time since some fixed moment; it never goes back. */
    virtual std::chrono::milliseconds elapsed() const = 0;

    /** Calls `callback` once, `delay` from now, from the event loop. */
    [[nodiscard]] virtual std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                                       std::function<void()> callback) = 0;
};
