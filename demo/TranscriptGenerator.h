#pragma once

#include "SampleTape.h"

namespace demo {

/// The transcript of a tape, one caption a line: first `beginning`, the words of its recording, then generated
/// sentences, up to `tape.transcriptWords` words. The same tape always gives the same text.
std::string generateTranscript(const SampleTape& tape, const std::string& beginning);

} // namespace demo
