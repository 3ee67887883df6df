#pragma once

#include "SampleTape.h"

#include <array>

namespace demo {

/// The recordings that make-recordings makes; streams are mapped onto them.
inline constexpr std::array<const char*, 4> recordingNames = {"fog-horn", "footbridge", "ferry-fare", "library-roof"};

/// The hub path of a recording's playlist.
std::string recordingPath(const std::string& recording);

/// Ordinary, playable tapes from 2026 back to 2019, newest first; any eight in a row touch all eight shelves.
/// `markets` must outlive them.
std::vector<SampleTape> ordinaryTapes(const std::array<Market, 3>& markets, std::size_t count);

/// The same for up to 2500 tapes that all stand on the councils' shelf, with ids of their own.
std::vector<SampleTape> tapesOfOneShelf(const std::array<Market, 3>& markets, std::size_t count);

} // namespace demo
