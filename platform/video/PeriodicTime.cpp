#include "PeriodicTime.h"

#include <cmath>

struct PeriodicTime::Observer
{
    double interval;
    std::function<void(double)> callback;
    double travelled = 0; ///< since the last report

    bool isDue(double step)
    {
        travelled += step;
        if (travelled < interval)
            return false;
        // What a jump skipped counts no further; in steady play the beat is kept.
        travelled = step >= interval ? 0 : travelled - interval;
        return true;
    }
};

std::unique_ptr<TimeObserver> PeriodicTime::add(std::chrono::seconds interval, std::function<void(double)> callback)
{
    struct Token : TimeObserver
    {
        explicit Token(std::shared_ptr<Observer> what) : observer(std::move(what)) {}

        std::shared_ptr<Observer> observer;
    };
    auto observer = std::make_shared<Observer>(Observer{double(interval.count()), std::move(callback)});
    m_observers.removeIf([](const auto& one) { return one.expired(); });
    m_observers.append(observer);
    return std::make_unique<Token>(std::move(observer));
}

void PeriodicTime::begin(double position)
{
    m_position = position;
    for (const auto& one : std::as_const(m_observers)) {
        if (const auto observer = one.lock())
            observer->travelled = 0;
    }
}

void PeriodicTime::moveTo(double position)
{
    if (!m_position || position < m_heldUntil)
        return;
    release();
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
