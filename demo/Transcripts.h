#pragma once

#include "SampleTape.h"

#include <filesystem>
#include <map>
#include <mutex>

namespace demo {

/// The spoken words of the tapes, made when first asked for and then kept. Any thread may ask.
class Transcripts
{
public:
    /// `recordings` is the folder that make-recordings made; a recording's own words open its tapes' transcripts.
    explicit Transcripts(std::filesystem::path recordings);

    /// The transcript's record, as it goes on the wire; the tape's state is not `Failing`.
    nlohmann::json record(const SampleTape& tape);
    /// Whether the archived transcript holds `needle`, which is folded by `folded`.
    bool mentions(const SampleTape& tape, const std::string& needle);

    /// `text` in lower case (ASCII and the accented letters of Latin-1), each run of white space as one space.
    static std::string folded(const std::string& text);

private:
    struct Text
    {
        std::string written; // one caption a line
        std::string searched;
        std::size_t words = 0;
    };

    const Text& text(const SampleTape& tape);
    std::string spoken(const std::string& recording) const;

    std::filesystem::path m_recordings;
    std::mutex m_mutex;
    std::map<std::int64_t, Text> m_texts; // by tape id; an entry never changes and never goes
};

} // namespace demo
