#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace demo {

/// One way of misbehaving, and to whom.
struct Fault
{
    enum class Kind { Refuse, Delay, Cut, Error, Stall, Garbage };

    std::string prefix;                ///< of the path and query as requested
    std::optional<std::regex> pattern; ///< the same text as a pattern, when it is one
    Kind kind = Kind::Error;
    int status = 503;                      ///< of an error
    std::chrono::milliseconds lasts{2000}; ///< of a delay
    int count = -1;                        ///< requests that are still to suffer it; below zero: all
};

/// The faults that a test has ordered. Any thread may use it.
class Faults
{
public:
    /// Takes an order as JSON; answers what is wrong with it, or nothing.
    std::optional<std::string> order(const nlohmann::json& order);
    /// Ends all faults, and lets go whatever a delay or a stall is holding.
    void clear();
    /// The fault that this request is to suffer; counts it off.
    std::optional<Fault> take(const std::string& target);
    /// Waits until `lasts` is over, the faults are cleared, or `isGone` (asked now and then) says so.
    void hold(std::chrono::milliseconds lasts, const std::function<bool()>& isGone);

private:
    std::mutex m_mutex;
    std::condition_variable m_cleared;
    std::uint64_t m_clearings = 0;
    std::vector<Fault> m_faults;
};

} // namespace demo
