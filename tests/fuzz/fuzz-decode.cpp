#include "RecordDecoder.h"
#include "TVStatus.h"
#include "TranscriptResult.h"

#include <cstdint>

namespace quillmere {

namespace {

/** Decodes the bytes. Any bytes give either a record or a failure; every other effect is a bug. */
template<typename Record>
bool decodes(const QByteArray& bytes)
{
    return decodeRecord<Record>(bytes).has_value();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const auto status = decodeRecord<TVStatus>(bytes);
    if (status)
        (void)status->news.stations();
    if (const auto news = decodeRecord<NewsStatus>(bytes); news && news->stations().isEmpty())
        __builtin_trap();
    // Every record type accepts any JSON object and refuses everything else, so all types give the same result.
    const bool isObject = status.has_value();
    const bool alike = decodes<Tape>(bytes) == isObject && decodes<TapePage>(bytes) == isObject &&
                       decodes<TranscriptResult>(bytes) == isObject && decodes<CatalogSummary>(bytes) == isObject &&
                       decodes<StationChannel>(bytes) == isObject && decodes<TapeMarket>(bytes) == isObject &&
                       decodes<TapeBody>(bytes) == isObject && decodes<TapeDocument>(bytes) == isObject;
    if (!alike)
        __builtin_trap();
    return 0;
}

} // namespace quillmere
