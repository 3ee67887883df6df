#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace quillmere::demo {

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

/// The recordings that make-recordings writes. Each tape plays one of them.
inline constexpr std::array<const char*, 4> recordingNames = {"fog-horn", "footbridge", "ferry-fare", "library-roof"};

/// The hub path of a recording's playlist.
std::string recordingPath(const std::string& recording);

/// Regular, playable tapes from 2026 back to 2019, newest first. Any eight consecutive tapes cover all eight shelves.
/// `markets` must outlive them.
std::vector<SampleTape> ordinaryTapes(const std::array<Market, 3>& markets, std::size_t count);

/// Like ordinaryTapes(), but all tapes belong to the councils' shelf and have ids of their own. `count` is at most
/// 2500.
std::vector<SampleTape> singleShelfTapes(const std::array<Market, 3>& markets, std::size_t count);

/// Tapes for tests of robustness: missing members, other scripts, long texts, markup, wrong types.
/// `markets` must outlive them; `port` is the port of the hub itself.
std::vector<SampleTape> edgeCaseTapes(const std::array<Market, 3>& markets, int port);

} // namespace quillmere::demo
