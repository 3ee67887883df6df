#pragma once

#include <QDateTime>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

namespace quillmere {

/**
 * The time source for the whole program, including countdown, ticker and timers. Screen thread only. It outlives all
 * its users. It is a QObject so that QML can pass it from screen to screen.
 */
class Clock : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /** A pending call. Destroying it cancels the call. */
    class Timer
    {
    public:
        virtual ~Timer() = default;
    };

    /** Wall-clock time; it may jump. */
    virtual QDateTime now() const = 0;

    /** Monotonic time since an unspecified epoch. */
    virtual std::chrono::milliseconds elapsed() const = 0;

    /** Calls `callback` once from the event loop, after `delay`. */
    [[nodiscard]] virtual std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                                       std::function<void()> callback) = 0;
};

} // namespace quillmere
