#include "SampleTape.h"

#include <algorithm>

namespace quillmere::demo {

using nlohmann::json;

namespace {

constexpr std::size_t longTitleLength = 300;             // characters
constexpr std::int64_t beyondDoubles = 9007199254740993; // 2^53 + 1, which a double cannot hold

/// Builds the edge cases. Each starts as a regular tape and then gets one unusual property. `invalid` names the members
/// that break docs/hub.md; the other edge cases are valid and only rare.
class EdgeCaseBuilder
{
public:
    EdgeCaseBuilder(const std::array<Market, 3>& markets, int port)
        : m_markets(markets), m_base("https://localhost:" + std::to_string(port))
    {}

    std::vector<SampleTape> build()
    {
        addMissingMembers();
        addStreams();
        addLanguages();
        addMarkup();
        addTranscripts();
        addWrongTypes();
        return std::move(m_tapes);
    }

private:
    SampleTape& add(const std::string& title, const std::string& body = "City Council",
                    const std::string& kind = "council")
    {
        const std::size_t index = m_tapes.size();
        SampleTape tape;
        tape.id = 301 + static_cast<std::int64_t>(index);
        tape.title = title;
        tape.date = "2023-0" + std::to_string(1 + index % 9) + "-14";
        tape.market = &m_markets[index % m_markets.size()];
        tape.body = Body{tape.market->slug + "-" + kind, body, kind};
        tape.recording = recordingNames[index % recordingNames.size()];
        tape.stream = recordingPath(tape.recording);
        tape.sizeBytes = 734'003'200;
        tape.transcript = TranscriptState::Archived;
        tape.transcriptWords = 2500;
        tape.location = "Council Chamber, Town Hall";
        m_tapes.push_back(std::move(tape));
        return m_tapes.back();
    }

    void addMissingMembers()
    {
        SampleTape& untitled = add("");
        untitled.title.reset();
        untitled.invalid = {"title"};
        add("   ").invalid = {"title"};
        add("Planning Commission - Work Session").body.reset();
        add("Harbor Commission - The Undated Tape", "Harbor Commission", "commission").date.reset();
        SampleTape& vague = add("School Board, Some Time in 2024", "School Board", "board");
        vague.date = "2024";
        vague.invalid = {"meeting_date"};
        SampleTape& never = add("School Board on a Day That Never Was", "School Board", "board");
        never.date = "2024-13-40";
        never.invalid = {"meeting_date"};
        SampleTape& nameless = add("Budget Hearing");
        nameless.body = Body{"", "", ""};
        nameless.invalid = {"body"};
        add("City Council"); // the title is only the name of the body
        SampleTape& bare = add("Bare Bones");
        bare.body.reset();
        bare.date.reset();
        bare.market = nullptr;
        bare.location.clear();
        bare.sizeBytes = 0;
        bare.transcript = TranscriptState::None;
        bare.invalid = {"market"};
    }

    void addStreams()
    {
        SampleTape& none = add("Parks Committee - Never Copied", "Parks Committee", "committee");
        none.stream.clear();
        none.recording.clear();
        SampleTape& lost = add("Library Committee - Lost in the Flood", "Library Committee", "committee");
        lost.stream = "/recordings/lost-in-the-flood/index.m3u8";
        lost.recording.clear();
        SampleTape& absolute = add("Ferry Board - By Its Full Address", "Ferry Board", "board");
        absolute.stream = m_base + absolute.stream;
    }

    void addLanguages()
    {
        add("Comité d’urbanisme — Séance à Éloïse-sur-Mer: où garer l’été?").body =
            Body{"brindlemere-comite", "Comité d’urbanisme", "comité"};
        add("港口委員會例會 — 霧笛與渡輪票價").body = Body{"tern-hollow-harbor-zh", "港口委員會", "委員會"};
        add("港湾委員会 定例会議・한국어 통역 제공");
        add("اجتماع مجلس الميناء — بوق الضباب وأجرة العبّارة").body =
            Body{"marrowby-flats-harbor-ar", "مجلس الميناء", "مجلس"};
        std::string emoji = "🚢 Harbor Commission 🌊 — Fog Horn ";
        emoji += "👩‍👩‍👧‍👦 Family Night 🏳️‍🌈 👩🏽‍⚖️ 1️⃣ é̂";
        add(emoji);
        add("School Board ‮drawkcab‬ Regular Meeting"); // right-to-left override
        add("School Board\nRegular Meeting\tin Two Lines", "School Board", "board").invalid = {"title"};
        std::string title = "Town Council - On the Naming of the Bridge That Replaces the Bridge";
        while (title.size() < longTitleLength) {
            title += " That Replaced the Bridge";
        }
        title.resize(longTitleLength - 1);
        add(title + ".");
    }

    void addMarkup()
    {
        add("<b>Planning Commission</b> - <i>Regular</i> Meeting &amp; Hearing");
        // A screen that renders markup would fetch this picture; the request would be in the hub's log.
        add("<img src=\"" + m_base + "/picture-in-a-title.png\"> School Board");
        add("<a href=\"" + m_base + "\">Finance Committee</a> %1 %s {0} \\n");
    }

    void addTranscripts()
    {
        add("Railroad Committee - Still Being Transcribed", "Railroad Committee", "committee").transcript =
            TranscriptState::Pending;
        SampleTape& silent = add("Shellfish Commission - A Silent Tape", "Shellfish Commission", "commission");
        silent.transcript = TranscriptState::Blank;
        silent.invalid = {"transcript"};
        SampleTape& ill = add("Water Commission - The Transcriber Is Ill", "Water Commission", "commission");
        ill.transcript = TranscriptState::Failing;
        ill.invalid = {"transcript"};
    }

    void addWrongTypes()
    {
        SampleTape& wrong = add("Village Council - Wrongly Typed");
        wrong.overrides = {{"size_bytes", 1.5},
                           {"has_agenda", "true"},
                           {"location", 7},
                           {"market", 12},
                           {"unknown", json::array({1, 2})},
                           {"documents", {{{"id", 1}, {"kind", "agenda"}, {"title", "Agenda"}}, "not a document"}}};
        wrong.invalid = {"size_bytes", "has_agenda", "location", "market", "documents"};
        add("Village Council - An Id beyond Every Double").id = beyondDoubles;
    }

    const std::array<Market, 3>& m_markets;
    std::string m_base;
    std::vector<SampleTape> m_tapes;
};

} // namespace

std::vector<SampleTape> edgeCaseTapes(const std::array<Market, 3>& markets, int port)
{
    return EdgeCaseBuilder(markets, port).build();
}

} // namespace quillmere::demo
