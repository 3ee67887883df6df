#include "Hub.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

namespace quillmere::demo {

using nlohmann::json;

namespace {

constexpr std::int64_t usualPage = 60; // tapes a page if the request gives no number
constexpr std::int64_t largestPage = 200;
const std::string towerChannelName = "news"; // the only channel that depends on the tower

/// The decimal integer in `text`, or `fallback` if the text is anything else.
std::int64_t number(const std::string& text, std::int64_t fallback)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? value : fallback;
}

std::string valueOf(const Hub::Query& query, const std::string& name)
{
    const auto found = query.find(name);
    return found == query.end() ? std::string() : found->second;
}

HubResponse playlist(std::string text)
{
    return {200, "application/vnd.apple.mpegurl", std::move(text)};
}

HubResponse segment(std::string bytes)
{
    return {200, "video/mp2t", std::move(bytes)};
}

HubResponse notFound()
{
    return errorResponse(404, "There is nothing here by that name.");
}

} // namespace

Hub::Hub(int port, std::filesystem::path recordings)
    : m_recordings(std::move(recordings)), m_defaultCatalogue(std::make_shared<const Catalogue>(port)),
      m_transcripts(m_recordings), m_catalogue(m_defaultCatalogue)
{
    for (const char* name : recordingNames) {
        if (!std::filesystem::exists(m_recordings / name / "index.m3u8")) {
            throw std::runtime_error("the recording " + std::string(name) + " is missing in " + m_recordings.string() +
                                     "; run make-recordings.");
        }
    }
    for (const char* name : {"news", "council", "parks"}) {
        m_channels.try_emplace(name, m_recordings / name);
    }
}

HubResponse Hub::respond(const std::string& path, const Query& query)
{
    // A file name cannot lead out of its folder: it has no slash, and its only dot is that of the extension.
    static const std::regex tapePath("/api/tv/tape/([^/]+)"), transcriptPath("/api/meetings/([^/]+)/transcript"),
        filePath("/(recordings|live)/([a-z0-9-]+)/([a-z0-9-]+\\.(m3u8|ts))");
    std::smatch parts;
    if (path == "/api/tv/status") {
        return status();
    }
    if (path == "/api/tv/tapes") {
        return tapes(query);
    }
    if (std::regex_match(path, parts, tapePath)) {
        return tape(parts[1]);
    }
    if (std::regex_match(path, parts, transcriptPath)) {
        return transcript(parts[1]);
    }
    if (std::regex_match(path, parts, filePath)) {
        return parts[1] == "live" ? live(parts[2], parts[3]) : recording(parts[2], parts[3]);
    }
    return notFound();
}

void Hub::patchStatus(const json& patch)
{
    const std::lock_guard lock(m_mutex);
    // The patches are collected here and merged into each response. merge_patch() would drop their nulls, which remove
    // members of the status.
    for (const auto& [key, value] : patch.items()) {
        if (value.is_object() && m_statusPatch[key].is_object()) {
            m_statusPatch[key].update(value, true);
        } else {
            m_statusPatch[key] = value;
        }
    }
}

void Hub::resetStatus()
{
    const std::lock_guard lock(m_mutex);
    m_statusPatch = json::object();
}

void Hub::setCatalogue(std::shared_ptr<const Catalogue> catalogue)
{
    const std::lock_guard lock(m_mutex);
    if (catalogue) {
        m_catalogue = std::move(catalogue);
    } else {
        m_catalogue = m_defaultCatalogue;
    }
}

json Hub::invalidTapes() const
{
    json tapes = json::object();
    for (const SampleTape& tape : m_defaultCatalogue->tapes()) {
        if (!tape.invalid.empty()) {
            tapes[std::to_string(tape.id)] = tape.invalid;
        }
    }
    return tapes;
}

std::shared_ptr<const Catalogue> Hub::catalogue() const
{
    const std::lock_guard lock(m_mutex);
    return m_catalogue;
}

HubResponse Hub::status()
{
    const auto currentCatalogue = catalogue();
    json markets = json::array();
    for (const Market& market : currentCatalogue->markets()) {
        markets.push_back(toJson(market));
    }
    json document = {{"news", m_tower.news()},
                     {"rewindery", {{"tapes", currentCatalogue->tapes().size()}, {"markets", std::move(markets)}}}};
    const std::lock_guard lock(m_mutex);
    document.merge_patch(m_statusPatch);
    return jsonResponse(document);
}

HubResponse Hub::tapes(const Query& query)
{
    const std::int64_t page = std::clamp<std::int64_t>(number(valueOf(query, "page"), 1), 1, 1'000'000);
    const std::int64_t perPage =
        std::clamp<std::int64_t>(number(valueOf(query, "per_page"), usualPage), 1, largestPage);
    const std::string market = valueOf(query, "market");
    std::string searchText = Transcripts::normalized(valueOf(query, "q"));
    searchText.erase(0, searchText.find_first_not_of(' '));

    const auto currentCatalogue = catalogue();
    std::int64_t total = 0;
    json items = json::array();
    for (const SampleTape& tape : currentCatalogue->tapes()) {
        if (!market.empty() && (!tape.market || tape.market->slug != market)) {
            continue;
        }
        const bool titleMatches =
            tape.title && Transcripts::normalized(*tape.title).find(searchText) != std::string::npos;
        if (!searchText.empty() && !titleMatches && !m_transcripts.contains(tape, searchText)) {
            continue;
        }
        if (total >= (page - 1) * perPage && total < page * perPage) {
            items.push_back(tape.listRecord());
        }
        ++total;
    }
    return jsonResponse({{"total", total}, {"page", page}, {"per_page", perPage}, {"items", std::move(items)}});
}

std::shared_ptr<const SampleTape> Hub::find(const std::string& id) const
{
    for (const auto& candidate : {catalogue(), m_defaultCatalogue}) {
        if (const SampleTape* tape = candidate->find(number(id, -1))) {
            return {candidate, tape};
        }
    }
    return nullptr;
}

HubResponse Hub::tape(const std::string& id)
{
    const auto tape = find(id);
    return tape ? jsonResponse(tape->fullRecord()) : errorResponse(404, "There is no such tape.");
}

HubResponse Hub::transcript(const std::string& id)
{
    const auto tape = find(id);
    if (!tape) {
        return errorResponse(404, "There is no such meeting.");
    }
    if (tape->transcript == TranscriptState::Failing) {
        return errorResponse(500, "The transcriber is ill.");
    }
    return jsonResponse(m_transcripts.record(*tape));
}

HubResponse Hub::recording(const std::string& name, const std::string& file) const
{
    std::ifstream stored(m_recordings / name / file, std::ios::binary);
    if (!stored) {
        return notFound();
    }
    std::string bytes{std::istreambuf_iterator<char>(stored), {}};
    return file.ends_with(".m3u8") ? playlist(std::move(bytes)) : segment(std::move(bytes));
}

HubResponse Hub::live(const std::string& name, const std::string& file) const
{
    const auto channel = m_channels.find(name);
    if (channel == m_channels.end() || (name == towerChannelName && !m_tower.isLit())) {
        return notFound();
    }
    const std::chrono::milliseconds elapsed = m_tower.sinceStart();
    if (file == "index.m3u8") {
        return playlist(channel->second.playlist(elapsed));
    }
    static const std::regex segmentFile("segment-([0-9]{1,12})\\.ts");
    std::smatch parts;
    if (std::regex_match(file, parts, segmentFile)) {
        const auto index = static_cast<std::uint64_t>(number(parts[1], 0));
        if (std::optional<std::string> bytes = channel->second.segment(index, elapsed)) {
            return segment(std::move(*bytes));
        }
    }
    return notFound();
}

} // namespace quillmere::demo
