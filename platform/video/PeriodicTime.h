#pragma once

#include "TimeObserver.h"

#include <QList>

#include <algorithm>
#include <chrono>
#include <functional>
#include <limits>
#include <memory>
#include <optional>

/**
 * Reports the position in play time: after each interval of it, and at a jump of at least that. Screen thread only. A
 * callback may destroy this, or any observer.
 */
class PeriodicTime
{
public:
    [[nodiscard]] std::unique_ptr<TimeObserver> add(std::chrono::seconds interval,
                                                    std::function<void(double seconds)> callback);

    /** The first picture is there: play time begins to count here. */
    void begin(double position);

    /** Nothing is reported, and nothing counts, until play has come to the furthest of these. */
    void holdUntil(double position) { m_heldUntil = std::max(m_heldUntil, position); }
    void release() { m_heldUntil = notHeld; }

    /** Nothing is reported until the next `begin`. */
    void end()
    {
        m_position.reset();
        release();
    }

    void moveTo(double position);

private:
    struct Observer;

    static constexpr double notHeld = std::numeric_limits<double>::lowest();

    QList<std::weak_ptr<Observer>> m_observers;
    std::optional<double> m_position;
    double m_heldUntil = notHeld;
};
