#pragma once

#include "SampleTape.h"

#include <filesystem>
#include <map>
#include <mutex>

namespace quillmere::demo {

/// The transcripts of the tapes. Each is generated at its first use and then cached. Thread-safe.
class Transcripts
{
public:
    /// `recordings` is a folder written by make-recordings. A recording's words start the transcripts of its tapes.
    explicit Transcripts(std::filesystem::path recordings);

    /// The JSON record of the transcript. The tape's state must not be `Failing`.
    nlohmann::json record(const SampleTape& tape);
    /// Whether the archived transcript contains `needle`, which must be normalized with normalized().
    bool contains(const SampleTape& tape, const std::string& needle);

    /// `text` trimmed, in lower case (ASCII and the accented letters of Latin-1), with each run of white space replaced
    /// by one space.
    static std::string normalized(const std::string& text);

private:
    struct Text
    {
        std::string text; // one caption a line
        std::string searchText;
        std::size_t words = 0;
    };

    const Text& text(const SampleTape& tape);
    std::string recordingTranscript(const std::string& recording) const;

    std::filesystem::path m_recordings;
    std::mutex m_mutex;
    std::map<std::int64_t, Text> m_texts; // by tape id; entries are never changed or removed
};

/// The transcript of a tape, one caption a line: first `beginning`, the words of its recording, then generated
/// sentences, up to `tape.transcriptWords` words. The same tape always gives the same text.
std::string generateTranscript(const SampleTape& tape, const std::string& beginning);

} // namespace quillmere::demo
