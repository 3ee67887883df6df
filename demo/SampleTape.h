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

/// What the hub answers to somebody who asks for the transcript.
enum class TranscriptState { None, Archived, Pending, Blank, Failing };

/// One tape of the sample hub: the facts, and how they are put on the wire.
struct SampleTape
{
    std::int64_t id = 0;
    std::optional<std::string> title;
    std::optional<std::string> date;
    const Market* market = nullptr; ///< one of the catalogue's markets, or none
    std::optional<Body> body;
    std::string stream;    ///< hub path or absolute address; may be empty
    std::string recording; ///< the recording that the stream plays, whose words open the transcript; may be empty
    std::int64_t sizeBytes = 0;
    bool hasAgenda = false;
    TranscriptState transcript = TranscriptState::None;
    std::size_t transcriptWords = 0;
    std::string location;
    std::vector<Document> documents;
    nlohmann::json oddities = nlohmann::json::object(); ///< members that replace the regular ones, null included
    /// Names of the members whose values break the hub's schema; "transcript" if the transcript's answer does.
    std::vector<std::string> invalid;

    /// The record of a list: everything but the documents and the source video's address.
    nlohmann::json listed() const;
    /// The full record.
    nlohmann::json detailed() const;
};

nlohmann::json toJson(const Market& market);

} // namespace demo
