#pragma once

#include "Clock.h"

#include <QList>
#include <QTimeZone>

namespace quillmere {

/** A clock that stands still until the test advances it. Timers fire inside `advance`, ordered by their due times. */
class ScriptedClock : public Clock
{
public:
    explicit ScriptedClock(QDateTime now = QDateTime(QDate(2025, 1, 1), QTime(12, 0), QTimeZone::utc()));

    QDateTime now() const override { return m_now; }
    std::chrono::milliseconds elapsed() const override { return m_elapsed; }
    std::unique_ptr<Timer> after(std::chrono::milliseconds delay, std::function<void()> callback) override;

    /** Advances both clocks; the timers that become due fire. */
    void advance(std::chrono::milliseconds by);

    /** Advances both clocks without firing any timer, as during a slow frame. Due timers fire at the next `advance`. */
    void stall(std::chrono::milliseconds by);

    /** Sets only the wall clock, as an adjustment of the system's time does. */
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

} // namespace quillmere
