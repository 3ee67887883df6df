#pragma once

#include "TransportStream.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillmere::demo {

/// A short recording, repeated as an endless live stream with continuous timestamps.
/// Immutable after construction, so any thread may use it.
class LiveChannel
{
public:
    /// `folder` is the folder of one recording. Throws std::runtime_error if it cannot be read.
    explicit LiveChannel(const std::filesystem::path& folder);

    /// The playlist at `elapsed` after the start: six segments; every four seconds one is added and one removed.
    std::string playlist(std::chrono::milliseconds elapsed) const;
    /// The segment with that number, or nothing if it is neither in the playlist nor among the six segments before it.
    std::optional<std::string> segment(std::uint64_t number, std::chrono::milliseconds elapsed) const;

private:
    std::uint64_t newest(std::chrono::milliseconds elapsed) const;

    std::vector<std::string> m_segments;
    PacketCounts m_counts{};
};

} // namespace quillmere::demo
