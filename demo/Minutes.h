#pragma once

#include "SampleTape.h"

namespace demo {

/// The words of a tape's meeting, one caption a line: `spoken` first, then made-up business until
/// `tape.transcriptWords` words are full. The same tape always gives the same words.
std::string minutesOf(const SampleTape& tape, const std::string& spoken);

} // namespace demo
