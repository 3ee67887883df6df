#pragma once

#include "SampleTape.h"

#include <array>

namespace demo {

/// The recordings that make-recordings writes. Each tape plays one of them.
inline constexpr std::array<const char*, 4> recordingNames = {"fog-horn", "footbridge", "ferry-fare", "library-roof"};

/// The hub path of a recording's playlist.
std::string recordingPath(const std::string& recording);

/// Regular, playable tapes from 2026 back to 2019, newest first. Any eight consecutive tapes cover all eight shelves.
/// `markets` must outlive them.
std::vector<SampleTape> ordinaryTapes(const std::array<Market, 3>& markets, std::size_t count);

/// Like ordinaryTapes(), but all tapes belong to the councils' shelf and have ids of their own. `count` is at most
/// 2500.
std::vector<SampleTape> singleShelfTapes(const std::array<Market, 3>& markets, std::size_t count);

} // namespace demo
