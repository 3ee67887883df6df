#include "RequestLog.h"

#include <algorithm>

namespace quillmere::demo {

namespace {

constexpr std::size_t maxEntries = 10000;

} // namespace

std::uint64_t RequestLog::begin(const std::string& method, const std::string& target, const std::string& ifNoneMatch)
{
    const std::lock_guard lock(m_mutex);
    if (m_entries.size() == maxEntries) {
        m_entries.pop_front();
    }
    m_entries.push_back({m_next, method, target, ifNoneMatch, 0});
    return m_next++;
}

void RequestLog::finish(std::uint64_t number, int status)
{
    const std::lock_guard lock(m_mutex);
    const auto found = std::find_if(m_entries.rbegin(), m_entries.rend(),
                                    [number](const Entry& entry) { return entry.number == number; });
    if (found != m_entries.rend()) {
        found->status = status;
    }
}

void RequestLog::clear()
{
    const std::lock_guard lock(m_mutex);
    m_entries.clear();
}

nlohmann::json RequestLog::toJson() const
{
    const std::lock_guard lock(m_mutex);
    nlohmann::json list = nlohmann::json::array();
    for (const Entry& entry : m_entries) {
        list.push_back({{"method", entry.method},
                        {"target", entry.target},
                        {"if_none_match", entry.ifNoneMatch},
                        {"status", entry.status}});
    }
    return list;
}

} // namespace quillmere::demo
