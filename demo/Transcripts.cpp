#include "Transcripts.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <sstream>

namespace quillmere::demo {

Transcripts::Transcripts(std::filesystem::path recordings) : m_recordings(std::move(recordings)) {}

nlohmann::json Transcripts::record(const SampleTape& tape)
{
    switch (tape.transcript) {
    case TranscriptState::Archived: {
        const Text& found = text(tape);
        return {{"status", "archived"}, {"text", found.text}, {"words", found.words}};
    }
    case TranscriptState::Pending:
        return {{"status", "pending"}, {"text", ""}, {"words", 0}};
    case TranscriptState::Blank:
        return {{"status", "archived"}, {"text", " \n\t\n "}, {"words", 0}};
    default:
        return {{"status", "none"}, {"text", ""}, {"words", 0}};
    }
}

bool Transcripts::contains(const SampleTape& tape, const std::string& needle)
{
    return tape.transcript == TranscriptState::Archived && text(tape).searchText.find(needle) != std::string::npos;
}

std::string Transcripts::normalized(const std::string& text)
{
    std::string result;
    result.reserve(text.size());
    unsigned char previous = 0;
    for (const char letter : text) {
        auto byte = static_cast<unsigned char>(letter);
        if (byte < 0x80 && std::isspace(byte)) {
            if (!result.empty() && result.back() != ' ') {
                result += ' ';
            }
        } else {
            const bool capital = previous == 0xC3 && byte >= 0x80 && byte <= 0x9E && byte != 0x97;
            byte = byte < 0x80 ? static_cast<unsigned char>(std::tolower(byte)) : byte;
            result += static_cast<char>(capital ? byte + 0x20 : byte);
        }
        previous = byte;
    }
    if (!result.empty() && result.back() == ' ') {
        result.pop_back();
    }
    return result;
}

const Transcripts::Text& Transcripts::text(const SampleTape& tape)
{
    const std::lock_guard lock(m_mutex);
    const auto [entry, isNew] = m_texts.try_emplace(tape.id);
    Text& text = entry->second;
    if (isNew) {
        text.text = generateTranscript(tape, recordingTranscript(tape.recording));
        text.searchText = normalized(text.text);
        std::istringstream words(text.text);
        text.words = static_cast<std::size_t>(
            std::distance(std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()));
    }
    return text;
}

std::string Transcripts::recordingTranscript(const std::string& recording) const
{
    if (recording.empty()) {
        return {};
    }
    std::ifstream file(m_recordings / recording / "transcript.txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace quillmere::demo
