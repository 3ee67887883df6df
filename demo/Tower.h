#pragma once

#include <atomic>
#include <chrono>
#include <nlohmann/json.hpp>

namespace demo {

/// The news tower: lit and dark by its schedule (dark for the first minute, then lit for three, and round again)
/// or as a test has set it. Any thread may use it.
class Tower
{
public:
    enum class Order { Schedule, Lit, Dark };

    Tower();

    void obey(Order order) { m_order = order; }
    bool isLit() const;
    /// Time since the hub was started: what the live channels run by.
    std::chrono::milliseconds sinceStart() const;
    /// The `news` record of the status.
    nlohmann::json news() const;

private:
    std::string nextBroadcast() const;

    const std::chrono::steady_clock::time_point m_start;
    const std::chrono::system_clock::time_point m_startedAt;
    std::atomic<Order> m_order = Order::Schedule;
};

} // namespace demo
