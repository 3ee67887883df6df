#pragma once

#include "SampleTape.h"

#include <array>

namespace demo {

/// Tapes for tests of robustness: missing members, other scripts, long texts, markup, wrong types.
/// `markets` must outlive the tapes; `port` is the port of the hub itself.
std::vector<SampleTape> edgeCaseTapes(const std::array<Market, 3>& markets, int port);

} // namespace demo
