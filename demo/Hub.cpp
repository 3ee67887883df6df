#include "Hub.h"

#include "OrdinaryTapes.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

namespace demo {

using nlohmann::json;

namespace {

constexpr std::int64_t usualPage = 60; // tapes a page when none are asked for
constexpr std::int64_t largestPage = 200;
const std::string towerChannel = "news"; // the channel that is dark when the tower is

/// A whole decimal number, or `otherwise`.
std::int64_t number(const std::string& text, std::int64_t otherwise)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? value : otherwise;
}

std::string valueOf(const Hub::Query& query, const std::string& name)
{
    const auto found = query.find(name);
    return found == query.end() ? std::string() : found->second;
}

Answer playlist(std::string text)
{
    return {200, "application/vnd.apple.mpegurl", std::move(text)};
}

Answer segment(std::string bytes)
{
    return {200, "video/mp2t", std::move(bytes)};
}

Answer notFound()
{
    return errorAnswer(404, "There is nothing here by that name.");
}

} // namespace

Hub::Hub(int port, std::filesystem::path recordings)
    : m_recordings(std::move(recordings)), m_own(std::make_shared<const Catalogue>(port)), m_transcripts(m_recordings),
      m_offered(m_own)
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

Answer Hub::answer(const std::string& path, const Query& query)
{
    // No name of a file can lead out of its folder: it holds no slash and no dot but the one before its ending.
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

void Hub::amendStatus(const json& amendment)
{
    const std::lock_guard lock(m_mutex);
    // Kept apart and merged at each answer: a merge of its own would lose the nulls, which remove members.
    for (const auto& [key, value] : amendment.items()) {
        if (value.is_object() && m_amendment[key].is_object()) {
            m_amendment[key].update(value, true);
        } else {
            m_amendment[key] = value;
        }
    }
}

void Hub::resetStatus()
{
    const std::lock_guard lock(m_mutex);
    m_amendment = json::object();
}

void Hub::offer(std::shared_ptr<const Catalogue> catalogue)
{
    const std::lock_guard lock(m_mutex);
    if (catalogue) {
        m_offered = std::move(catalogue);
    } else {
        m_offered = m_own;
    }
}

json Hub::invalidTapes() const
{
    json tapes = json::object();
    for (const SampleTape& tape : m_own->tapes()) {
        if (!tape.invalid.empty()) {
            tapes[std::to_string(tape.id)] = tape.invalid;
        }
    }
    return tapes;
}

std::shared_ptr<const Catalogue> Hub::catalogue() const
{
    const std::lock_guard lock(m_mutex);
    return m_offered;
}

Answer Hub::status()
{
    const auto offered = catalogue();
    json markets = json::array();
    for (const Market& market : offered->markets()) {
        markets.push_back(toJson(market));
    }
    json document = {{"news", m_tower.news()},
                     {"rewindery", {{"tapes", offered->tapes().size()}, {"markets", std::move(markets)}}}};
    const std::lock_guard lock(m_mutex);
    document.merge_patch(m_amendment);
    return documentAnswer(document);
}

Answer Hub::tapes(const Query& query)
{
    const std::int64_t page = std::clamp<std::int64_t>(number(valueOf(query, "page"), 1), 1, 1'000'000);
    const std::int64_t perPage =
        std::clamp<std::int64_t>(number(valueOf(query, "per_page"), usualPage), 1, largestPage);
    const std::string market = valueOf(query, "market");
    std::string wanted = Transcripts::folded(valueOf(query, "q"));
    wanted.erase(0, wanted.find_first_not_of(' '));

    const auto offered = catalogue();
    std::int64_t total = 0;
    json items = json::array();
    for (const SampleTape& tape : offered->tapes()) {
        if (!market.empty() && (!tape.market || tape.market->slug != market)) {
            continue;
        }
        const bool titled = tape.title && Transcripts::folded(*tape.title).find(wanted) != std::string::npos;
        if (!wanted.empty() && !titled && !m_transcripts.mentions(tape, wanted)) {
            continue;
        }
        if (total >= (page - 1) * perPage && total < page * perPage) {
            items.push_back(tape.listed());
        }
        ++total;
    }
    return documentAnswer({{"total", total}, {"page", page}, {"per_page", perPage}, {"items", std::move(items)}});
}

std::shared_ptr<const SampleTape> Hub::find(const std::string& id) const
{
    for (const auto& shelves : {catalogue(), m_own}) {
        if (const SampleTape* tape = shelves->find(number(id, -1))) {
            return {shelves, tape};
        }
    }
    return nullptr;
}

Answer Hub::tape(const std::string& id)
{
    const auto tape = find(id);
    return tape ? documentAnswer(tape->detailed()) : errorAnswer(404, "There is no such tape.");
}

Answer Hub::transcript(const std::string& id)
{
    const auto tape = find(id);
    if (!tape) {
        return errorAnswer(404, "There is no such meeting.");
    }
    if (tape->transcript == TranscriptState::Failing) {
        return errorAnswer(500, "The transcriber is ill.");
    }
    return documentAnswer(m_transcripts.record(*tape));
}

Answer Hub::recording(const std::string& name, const std::string& file) const
{
    std::ifstream stored(m_recordings / name / file, std::ios::binary);
    if (!stored) {
        return notFound();
    }
    std::string bytes{std::istreambuf_iterator<char>(stored), {}};
    return file.ends_with(".m3u8") ? playlist(std::move(bytes)) : segment(std::move(bytes));
}

Answer Hub::live(const std::string& name, const std::string& file) const
{
    const auto channel = m_channels.find(name);
    if (channel == m_channels.end() || (name == towerChannel && !m_tower.isLit())) {
        return notFound();
    }
    const std::chrono::milliseconds since = m_tower.sinceStart();
    if (file == "index.m3u8") {
        return playlist(channel->second.playlist(since));
    }
    static const std::regex segmentFile("segment-([0-9]{1,12})\\.ts");
    std::smatch parts;
    if (std::regex_match(file, parts, segmentFile)) {
        const auto index = static_cast<std::uint64_t>(number(parts[1], 0));
        if (std::optional<std::string> bytes = channel->second.segment(index, since)) {
            return segment(std::move(*bytes));
        }
    }
    return notFound();
}

} // namespace demo
