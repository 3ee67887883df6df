#pragma once

#include "SampleTape.h"

#include <array>

namespace demo {

/// The tapes that a careless screen stumbles over: what is missing, foreign, overlong, marked up or of the wrong type.
/// `markets` must outlive them; `port` is the hub's own.
std::vector<SampleTape> oddTapes(const std::array<Market, 3>& markets, int port);

} // namespace demo
