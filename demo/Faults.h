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

namespace quillmere::demo {

/// One fault and the requests that it applies to: those that start with `prefix` or with a match of `pattern`.
struct Fault
{
    enum class Kind { Refuse, Delay, Cut, Error, Stall, Garbage };

    std::string prefix;                ///< start of the request's path and query
    std::optional<std::regex> pattern; ///< the same text as a regular expression, if it is a valid one
    Kind kind = Kind::Error;
    int status = 503;                         ///< status of an Error
    std::chrono::milliseconds duration{2000}; ///< duration of a Delay
    int count = -1; ///< number of requests that the fault still applies to; negative: no limit
};

/// The faults that a test has requested. Thread-safe.
class Faults
{
public:
    /// Adds a fault described in JSON. Returns an error message if the description is not valid.
    std::optional<std::string> add(const nlohmann::json& description);
    /// Removes all faults and wakes every thread blocked in wait().
    void clear();
    /// The fault to apply to this request, if any. Decrements the fault's `count`.
    std::optional<Fault> nextFault(const std::string& target);
    /// Blocks until `duration` has passed, clear() is called, or `isDisconnected`, polled every 50 ms, returns true.
    void wait(std::chrono::milliseconds duration, const std::function<bool()>& isDisconnected);

private:
    std::mutex m_mutex;
    std::condition_variable m_cleared;
    std::uint64_t m_clearCount = 0;
    std::vector<Fault> m_faults;
};

} // namespace quillmere::demo
