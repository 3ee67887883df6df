#include "RecordDecoder.h"
#include "Tape.h"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

namespace quillmere {

namespace {

constexpr int tapesOnAPage = 200;

nlohmann::json realisticTape(int id)
{
    const std::string number = std::to_string(id);
    nlohmann::json tape{
        {"id", 100'000 + id},
        {"title", "City Council Regular Meeting, Evening Session No. " + number},
        {"meeting_date", "2025-06-03"},
        {"market", {{"slug", "springfield"}, {"name", "Springfield"}, {"state_code", "OR"}, {"tapes", 312}}},
        {"body", {{"slug", "city-council"}, {"name", "Consejo Municipal · City Council"}, {"kind", "council"}}},
        {"stream_url", "/recordings/springfield/" + number + "/index.m3u8"},
        {"size_bytes", 1'734'552'113LL + id},
        {"has_agenda", id % 2 == 0},
        {"has_transcript", id % 3 != 0},
        {"video_url", "https://video.example.org/watch/" + number},
        {"location", "Council Chambers, 225 Fifth Street"},
        {"documents", nlohmann::json::array()}};
    for (int document = 0; document < id % 4; ++document) {
        const std::string name = std::to_string(document);
        const std::string url = std::string("/documents/").append(number).append("/").append(name).append(".pdf");
        tape["documents"].push_back({{"id", id * 10 + document},
                                     {"kind", "agenda"},
                                     {"title", "Agenda packet, part " + name},
                                     {"mime_type", "application/pdf"},
                                     {"url", url}});
    }
    return tape;
}

QByteArray page()
{
    nlohmann::json page{{"total", 312}, {"page", 1}, {"per_page", tapesOnAPage}};
    for (int id = 0; id < tapesOnAPage; ++id)
        page["items"].push_back(realisticTape(id));
    return QByteArray::fromStdString(page.dump());
}

void decodeAPageOf200(benchmark::State& state)
{
    const QByteArray bytes = page();
    while (state.KeepRunning()) {
        const auto decoded = decodeRecord<TapePage>(bytes);
        if (!decoded || decoded->items.size() != tapesOnAPage || decoded->items.back().documents.size() != 3)
            state.SkipWithError("The page was not decoded.");
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

/** Yardstick: the JSON parser alone on the same bytes. */
void parseAPageOf200(benchmark::State& state)
{
    const QByteArray bytes = page();
    while (state.KeepRunning())
        benchmark::DoNotOptimize(nlohmann::json::parse(bytes.cbegin(), bytes.cend()));
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

} // namespace

BENCHMARK(decodeAPageOf200)->Unit(benchmark::kMicrosecond);
BENCHMARK(parseAPageOf200)->Unit(benchmark::kMicrosecond);

} // namespace quillmere

BENCHMARK_MAIN();
