#include "SampleTape.h"

namespace quillmere::demo {

using nlohmann::json;

namespace {

json regular(const SampleTape& tape)
{
    json record = {
        {"id", tape.id},
        {"title", tape.title ? json(*tape.title) : json(nullptr)},
        {"meeting_date", tape.date ? json(*tape.date) : json(nullptr)},
        {"stream_url", tape.stream},
        {"size_bytes", tape.sizeBytes},
        {"has_agenda", tape.hasAgenda},
        {"has_transcript", tape.transcript != TranscriptState::None},
        {"location", tape.location},
    };
    record["market"] = tape.market ? toJson(*tape.market) : json(nullptr);
    record["body"] = nullptr;
    if (tape.body) {
        record["body"] = {{"slug", tape.body->slug}, {"name", tape.body->name}, {"kind", tape.body->kind}};
    }
    return record;
}

} // namespace

json toJson(const Market& market)
{
    return {{"slug", market.slug}, {"name", market.name}, {"state_code", market.stateCode}, {"tapes", market.tapes}};
}

json SampleTape::listRecord() const
{
    json record = regular(*this);
    record.update(overrides);
    return record;
}

json SampleTape::fullRecord() const
{
    json record = regular(*this);
    record["video_url"] = "https://video.example/watch/" + std::to_string(id);
    json list = json::array();
    for (std::size_t i = 0; i < documents.size(); ++i) {
        const std::string file = std::to_string(id) + "-" + std::to_string(i + 1) + ".pdf";
        list.push_back({{"id", id % 1000000 * 10 + static_cast<std::int64_t>(i)},
                        {"kind", documents[i].kind},
                        {"title", documents[i].title},
                        {"mime_type", "application/pdf"},
                        {"url", "/documents/" + file}});
    }
    record["documents"] = std::move(list);
    record.update(overrides);
    return record;
}

} // namespace quillmere::demo
