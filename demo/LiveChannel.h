#pragma once

#include "TransportStream.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace demo {

/// A short recording that is played round and round as an endless live stream with running time stamps.
/// Never changes once made, so any thread may ask it.
class LiveChannel
{
public:
    /// `folder` is a recording's; throws std::runtime_error with a sentence when it cannot be read.
    explicit LiveChannel(const std::filesystem::path& folder);

    /// The playlist at `since` after the start: a window of six segments that moves on by one each four seconds.
    std::string playlist(std::chrono::milliseconds since) const;
    /// The segment of that number, or nothing when it is not in the window, nor was a moment ago.
    std::optional<std::string> segment(std::uint64_t number, std::chrono::milliseconds since) const;

private:
    std::uint64_t newest(std::chrono::milliseconds since) const;

    std::vector<std::string> m_segments;
    PacketCounts m_counts{};
};

} // namespace demo
