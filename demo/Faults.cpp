#include "Faults.h"

#include <algorithm>
#include <map>

namespace quillmere::demo {

using nlohmann::json;
using namespace std::chrono_literals;

namespace {

const std::map<std::string, Fault::Kind> kinds = {{"refuse", Fault::Kind::Refuse}, {"delay", Fault::Kind::Delay},
                                                  {"cut", Fault::Kind::Cut},       {"error", Fault::Kind::Error},
                                                  {"stall", Fault::Kind::Stall},   {"garbage", Fault::Kind::Garbage}};

bool matches(const Fault& fault, const std::string& target)
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
        return std::nullopt; // the text is only a prefix
    }
}

} // namespace

std::optional<std::string> Faults::add(const json& description)
{
    Fault fault;
    try {
        fault.prefix = description.at("path").get<std::string>();
        const auto kind = kinds.find(description.at("kind").get<std::string>());
        if (kind == kinds.end()) {
            return "kind is one of refuse, delay, cut, error, stall, garbage.";
        }
        fault.kind = kind->second;
        fault.status = description.value("status", fault.status);
        fault.duration = std::chrono::milliseconds(description.value("ms", fault.duration.count()));
        fault.count = description.value("count", fault.count);
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
    ++m_clearCount;
    m_cleared.notify_all();
}

std::optional<Fault> Faults::nextFault(const std::string& target)
{
    const std::lock_guard lock(m_mutex);
    const auto found = std::find_if(m_faults.begin(), m_faults.end(),
                                    [&](const Fault& fault) { return fault.count != 0 && matches(fault, target); });
    if (found == m_faults.end()) {
        return std::nullopt;
    }
    if (found->count > 0) {
        --found->count;
    }
    return *found;
}

void Faults::wait(std::chrono::milliseconds duration, const std::function<bool()>& isDisconnected)
{
    constexpr auto pollInterval = 50ms;
    const auto end = std::chrono::steady_clock::now() + duration;
    std::unique_lock lock(m_mutex);
    const std::uint64_t clearCount = m_clearCount;
    while (clearCount == m_clearCount && std::chrono::steady_clock::now() < end && !isDisconnected()) {
        m_cleared.wait_until(lock, std::min(end, std::chrono::steady_clock::now() + pollInterval));
    }
}

} // namespace quillmere::demo
