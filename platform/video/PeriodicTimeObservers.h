#pragma once

#include "TimeObserver.h"

#include <QList>

#include <algorithm>
#include <chrono>
#include <functional>
#include <limits>
#include <memory>
#include <optional>

namespace quillmere {

/**
 * The periodic time observers of a player. Calls each with the position after every interval of play time, and after a
 * jump of at least one interval. Screen thread only. A callback may destroy this object or any observer.
 */
class PeriodicTimeObservers
{
public:
    [[nodiscard]] std::unique_ptr<TimeObserver> add(std::chrono::seconds interval,
                                                    std::function<void(double seconds)> callback);

    /** Starts to count play time, at the first picture of an item. */
    void start(double position);

    /** Reports nothing and counts no play time before `position`; of several calls the furthest position applies. */
    void suspendUntil(double position) { m_suspendedUntil = std::max(m_suspendedUntil, position); }
    void resume() { m_suspendedUntil = notSuspended; }

    /** Reports nothing until the next `start`. */
    void stop()
    {
        m_position.reset();
        resume();
    }

    void setPosition(double position);

private:
    struct Observer;

    static constexpr double notSuspended = std::numeric_limits<double>::lowest();

    QList<std::weak_ptr<Observer>> m_observers;
    std::optional<double> m_position;
    double m_suspendedUntil = notSuspended;
};

} // namespace quillmere
