#include "Faults.h"

#include <algorithm>
#include <map>

namespace demo {

using nlohmann::json;
using namespace std::chrono_literals;

namespace {

const std::map<std::string, Fault::Kind> kinds = {{"refuse", Fault::Kind::Refuse}, {"delay", Fault::Kind::Delay},
                                                  {"cut", Fault::Kind::Cut},       {"error", Fault::Kind::Error},
                                                  {"stall", Fault::Kind::Stall},   {"garbage", Fault::Kind::Garbage}};

bool concerns(const Fault& fault, const std::string& target)
{
    if (target.starts_with(fault.prefix)) {
        return true;
    }
    return fault.pattern && std::regex_search(target, *fault.pattern, std::regex_constants::match_continuous);
}

std::optional<std::regex> patternFrom(const std::string& text)
{
    try {
        return std::regex(text);
    } catch (const std::regex_error&) {
        return std::nullopt; // then it is a prefix and nothing more
    }
}

} // namespace

std::optional<std::string> Faults::order(const json& order)
{
    Fault fault;
    try {
        fault.prefix = order.at("path").get<std::string>();
        const auto kind = kinds.find(order.at("kind").get<std::string>());
        if (kind == kinds.end()) {
            return "kind is one of refuse, delay, cut, error, stall, garbage.";
        }
        fault.kind = kind->second;
        fault.status = order.value("status", fault.status);
        fault.lasts = std::chrono::milliseconds(order.value("ms", fault.lasts.count()));
        fault.count = order.value("count", fault.count);
    } catch (const json::exception&) {
        return "a fault has path and kind (texts), and may have status, ms and count (integers).";
    }
    if (fault.status < 200 || fault.status > 599) {
        return "status is a number from 200 to 599.";
    }
    fault.pattern = patternFrom(fault.prefix);
    const std::lock_guard lock(m_mutex);
    m_faults.push_back(std::move(fault));
    return std::nullopt;
}

void Faults::clear()
{
    const std::lock_guard lock(m_mutex);
    m_faults.clear();
    ++m_clearings;
    m_cleared.notify_all();
}

std::optional<Fault> Faults::take(const std::string& target)
{
    const std::lock_guard lock(m_mutex);
    const auto found = std::find_if(m_faults.begin(), m_faults.end(),
                                    [&](const Fault& fault) { return fault.count != 0 && concerns(fault, target); });
    if (found == m_faults.end()) {
        return std::nullopt;
    }
    if (found->count > 0) {
        --found->count;
    }
    return *found;
}

void Faults::hold(std::chrono::milliseconds lasts, const std::function<bool()>& isGone)
{
    constexpr auto look = 50ms;
    const auto end = std::chrono::steady_clock::now() + lasts;
    std::unique_lock lock(m_mutex);
    const std::uint64_t clearings = m_clearings;
    while (clearings == m_clearings && std::chrono::steady_clock::now() < end && !isGone()) {
        m_cleared.wait_until(lock, std::min(end, std::chrono::steady_clock::now() + look));
    }
}

} // namespace demo
