#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace demo {

struct Market
{
    std::string slug;
    std::string name;
    std::string stateCode;
    std::size_t tapes = 0;
};

struct Body
{
    std::string slug;
    std::string name;
    std::string kind;
};

struct Document
{
    std::string kind;
    std::string title;
};

/// What the hub sends for the transcript of a tape.
enum class TranscriptState { None, Archived, Pending, Blank, Failing };

/// One tape of the sample hub and its JSON records.
struct SampleTape
{
    std::int64_t id = 0;
    std::optional<std::string> title;
    std::optional<std::string> date;
    const Market* market = nullptr; ///< one of the catalogue's markets, or null
    std::optional<Body> body;
    std::string stream;    ///< hub path or absolute address; may be empty
    std::string recording; ///< what the stream plays; its words start the transcript; may be empty
    std::int64_t sizeBytes = 0;
    bool hasAgenda = false;
    TranscriptState transcript = TranscriptState::None;
    std::size_t transcriptWords = 0;
    std::string location;
    std::vector<Document> documents;
    nlohmann::json overrides = nlohmann::json::object(); ///< members that replace the regular ones; null is allowed
    /// Names of the members that break the hub's schema; "transcript" if the transcript's response does.
    std::vector<std::string> invalid;

    /// The record in a list: all members except `documents` and `video_url`.
    nlohmann::json listRecord() const;
    /// The full record.
    nlohmann::json fullRecord() const;
};

nlohmann::json toJson(const Market& market);

} // namespace demo
