#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

namespace quillmere::demo {

/// The last 10,000 requests that the hub has received. Thread-safe.
class RequestLog
{
public:
    /// Adds a request when it arrives, with status 0. Returns its number.
    std::uint64_t begin(const std::string& method, const std::string& target, const std::string& ifNoneMatch);
    /// Sets the response status of the request with that number. Status 0 stays if the connection was closed instead.
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

} // namespace quillmere::demo
