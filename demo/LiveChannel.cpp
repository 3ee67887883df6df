#include "LiveChannel.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace quillmere::demo {

namespace {

constexpr std::uint64_t window = 6;         // segments in the playlist
constexpr std::uint64_t grace = 6;          // older segments that slow players can still fetch
constexpr std::uint64_t segmentSeconds = 4; // as cut by make-recordings
constexpr std::uint64_t ticksPerSecond = 90000;

} // namespace

LiveChannel::LiveChannel(const std::filesystem::path& folder)
{
    std::ifstream list(folder / "index.m3u8");
    for (std::string line; std::getline(list, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        std::ifstream file(folder / line, std::ios::binary);
        m_segments.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        countPackets(m_segments.back(), m_counts);
    }
    if (m_segments.empty()) {
        throw std::runtime_error("the live channel in " + folder.string() + " has no segments; run make-recordings.");
    }
}

std::uint64_t LiveChannel::newest(std::chrono::milliseconds elapsed) const
{
    // The stream starts before the hub does, so the playlist is full from the start.
    return window - 1 + static_cast<std::uint64_t>(elapsed.count()) / (1000 * segmentSeconds);
}

std::string LiveChannel::playlist(std::chrono::milliseconds elapsed) const
{
    const std::uint64_t last = newest(elapsed);
    std::ostringstream text;
    text << "#EXTM3U\n#EXT-X-VERSION:6\n#EXT-X-TARGETDURATION:" << segmentSeconds
         << "\n#EXT-X-MEDIA-SEQUENCE:" << last + 1 - window << "\n#EXT-X-INDEPENDENT-SEGMENTS\n";
    for (std::uint64_t number = last + 1 - window; number <= last; ++number) {
        text << "#EXTINF:" << segmentSeconds << ".000000,\nsegment-" << number << ".ts\n";
    }
    return text.str();
}

std::optional<std::string> LiveChannel::segment(std::uint64_t number, std::chrono::milliseconds elapsed) const
{
    const std::uint64_t last = newest(elapsed);
    if (number > last || number + window + grace <= last) {
        return std::nullopt;
    }
    const std::uint64_t loops = number / m_segments.size();
    const std::uint64_t ticks = loops * m_segments.size() * segmentSeconds * ticksPerSecond;
    return shiftedStream(m_segments[number % m_segments.size()], ticks, loops, m_counts);
}

} // namespace quillmere::demo
