#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

namespace demo {

/// The requests that the hub has seen, the last 10,000 of them. Any thread may use it.
class RequestLog
{
public:
    /// Notes a request on its arrival, with the status 0; answers its number.
    std::uint64_t begin(const std::string& method, const std::string& target, const std::string& ifNoneMatch);
    /// Notes the status that the request of that number was answered with; 0 is a connection closed on it.
    void finish(std::uint64_t number, int status);
    void clear();
    nlohmann::json toJson() const;

private:
    struct Entry
    {
        std::uint64_t number;
        std::string method;
        std::string target;
        std::string ifNoneMatch;
        int status;
    };

    mutable std::mutex m_mutex;
    std::uint64_t m_next = 0;
    std::deque<Entry> m_entries;
};

} // namespace demo
