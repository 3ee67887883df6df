#include "PeriodicTimeObservers.h"

#include <cmath>

namespace quillmere {

struct PeriodicTimeObservers::Observer
{
    double interval;
    std::function<void(double)> callback;
    double playTime = 0; ///< seconds since the last report

    bool isDue(double step)
    {
        playTime += step;
        if (playTime < interval)
            return false;
        // In steady play the remainder counts towards the next report; after a jump the interval starts again.
        playTime = step >= interval ? 0 : playTime - interval;
        return true;
    }
};

std::unique_ptr<TimeObserver> PeriodicTimeObservers::add(std::chrono::seconds interval,
                                                         std::function<void(double)> callback)
{
    struct Registration : TimeObserver
    {
        explicit Registration(std::shared_ptr<Observer> registered) : observer(std::move(registered)) {}

        std::shared_ptr<Observer> observer;
    };
    auto observer = std::make_shared<Observer>(Observer{double(interval.count()), std::move(callback)});
    m_observers.removeIf([](const auto& one) { return one.expired(); });
    m_observers.append(observer);
    return std::make_unique<Registration>(std::move(observer));
}

void PeriodicTimeObservers::start(double position)
{
    m_position = position;
    for (const auto& one : std::as_const(m_observers)) {
        if (const auto observer = one.lock())
            observer->playTime = 0;
    }
}

void PeriodicTimeObservers::setPosition(double position)
{
    if (!m_position || position < m_suspendedUntil)
        return;
    resume();
    const double step = std::abs(position - *m_position);
    m_position = position;
    QList<std::weak_ptr<Observer>> due;
    for (const auto& one : std::as_const(m_observers)) {
        const auto observer = one.lock();
        if (observer && observer->isDue(step))
            due.append(one);
    }
    for (const auto& one : due) {
        if (const auto observer = one.lock())
            observer->callback(position);
    }
}

} // namespace quillmere
