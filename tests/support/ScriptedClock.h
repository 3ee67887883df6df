#pragma once

#include "Clock.h"

#include <QList>
#include <QTimeZone>

/** A clock that stands still until the test moves it; timers fire inside `advance`, in the order of their times. */
class ScriptedClock : public Clock
{
public:
    explicit ScriptedClock(QDateTime now = QDateTime(QDate(2025, 1, 1), QTime(12, 0), QTimeZone::utc()));

    QDateTime now() const override { return m_now; }
    std::chrono::milliseconds elapsed() const override { return m_elapsed; }
    std::unique_ptr<Timer> after(std::chrono::milliseconds delay, std::function<void()> callback) override;

    /** Lets time pass: both clocks move and the timers that come due fire. */
    void advance(std::chrono::milliseconds by);

    /** Time passes in which no timer gets to fire, as during a slow frame; those that came due fire at the next move. */
    void stall(std::chrono::milliseconds by);

    /** Sets the wall clock alone, as an adjustment of the system's time does. */
    void jumpTo(const QDateTime& now) { m_now = now; }

    int pendingTimers() const;

private:
    struct Pending
    {
        std::chrono::milliseconds due;
        std::function<void()> callback;
    };
    struct ScriptedTimer;

    QDateTime m_now;
    std::chrono::milliseconds m_elapsed{0};
    QList<std::weak_ptr<Pending>> m_pending;
};
