#pragma once

#include <atomic>
#include <chrono>
#include <nlohmann/json.hpp>

namespace quillmere::demo {

/// The transmission tower of the news channel. By schedule it repeats a cycle: dark for one minute, then lit (on the
/// air) for three. A test can also set it to lit or dark. Thread-safe.
class Tower
{
public:
    enum class Mode { Schedule, Lit, Dark };

    Tower();

    void setMode(Mode mode) { m_mode = mode; }
    bool isLit() const;
    /// The time since the start of the hub. The live channels use it as their clock.
    std::chrono::milliseconds sinceStart() const;
    /// The `news` record of the status.
    nlohmann::json news() const;

private:
    std::string nextBroadcast() const;

    const std::chrono::steady_clock::time_point m_start;
    const std::chrono::system_clock::time_point m_startedAt;
    std::atomic<Mode> m_mode = Mode::Schedule;
};

} // namespace quillmere::demo
