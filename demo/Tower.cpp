#include "Tower.h"

#include <array>
#include <ctime>

namespace quillmere::demo {

using namespace std::chrono;
using namespace std::chrono_literals;

namespace {

constexpr seconds darkDuration = 60s;
constexpr seconds litDuration = 180s;
constexpr seconds cycle = darkDuration + litDuration;

} // namespace

Tower::Tower() : m_start(steady_clock::now()), m_startedAt(system_clock::now()) {}

milliseconds Tower::sinceStart() const
{
    return duration_cast<milliseconds>(steady_clock::now() - m_start);
}

bool Tower::isLit() const
{
    const Mode mode = m_mode;
    return mode == Mode::Schedule ? sinceStart() % cycle >= darkDuration : mode == Mode::Lit;
}

nlohmann::json Tower::news() const
{
    return {
        {"tower_live", isLit()},
        {"takeover", false},
        {"hls_url", "/live/news/index.m3u8"},
        {"mode", "hls"},
        {"youtube_id", ""},
        {"tagline", "The fog lifts at five."},
        {"program_title", "The Five O'Clock Record"},
        {"program_note", "Tonight: the fog horn, the ferry, and the salt in the shed"},
        {"next_broadcast", nextBroadcast()},
        {"next_broadcast_label", "The Five O'Clock Record, from the tower on Lantern Hill"},
        {"ticker",
         {"Harbor Commission buys a politer fog horn", "Ferry sails at half past six from the first of May",
          "Mill Creek footbridge closed for the school holiday", "Library: the maps are going back upstairs",
          "Second grade gives sixty-three dollars and a button"}},
        // A stream name and a path: a hub may send either form.
        {"channels",
         {{"3", {{"label", "Council Chamber"}, {"path", "council"}}},
          {"12", {{"label", "Parks"}, {"path", "/live/parks/index.m3u8"}}}}},
    };
}

std::string Tower::nextBroadcast() const
{
    const auto cycles = (sinceStart() - darkDuration + cycle) / cycle; // number of broadcasts started so far
    const std::time_t when = system_clock::to_time_t(m_startedAt + darkDuration + cycles * cycle);
    std::tm parts{};
    gmtime_r(&when, &parts);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text.data();
}

} // namespace quillmere::demo
