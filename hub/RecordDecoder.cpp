#include "RecordDecoder.h"

#include "RecordReader.h"
#include "TVStatus.h"
#include "TranscriptResult.h"

namespace quillmere {

// The readFields() overloads are in the namespace of the records, so that RecordReader finds them by argument-dependent
// lookup. They are static to keep them local to this file.

static void readFields(const RecordReader& reader, StationChannel& channel)
{
    reader.read("label", channel.label);
    reader.read("path", channel.path);
}

static void readFields(const RecordReader& reader, NewsStatus& news)
{
    reader.read("tower_live", news.towerLive);
    reader.read("takeover", news.takeover);
    reader.readNonEmpty("hls_url", news.hlsURL);
    reader.readNonEmpty("mode", news.mode);
    reader.read("youtube_id", news.youtubeID);
    reader.read("tagline", news.tagline);
    reader.read("program_title", news.programTitle);
    reader.read("program_note", news.programNote);
    reader.read("next_broadcast", news.nextBroadcast);
    reader.read("next_broadcast_label", news.nextBroadcastLabel);
    reader.read("ticker", news.ticker);
    reader.read("channels", news.channels);
}

static void readFields(const RecordReader& reader, TapeMarket& market)
{
    reader.read("slug", market.slug);
    reader.readTruncated("name", market.name);
    reader.read("state_code", market.stateCode);
    reader.read("tapes", market.tapes);
}

static void readFields(const RecordReader& reader, CatalogSummary& summary)
{
    reader.read("tapes", summary.tapes);
    reader.read("markets", summary.markets);
}

static void readFields(const RecordReader& reader, TVStatus& status)
{
    reader.read("news", status.news);
    reader.read("rewindery", status.rewindery);
}

static void readFields(const RecordReader& reader, TapeBody& body)
{
    reader.readTruncated("slug", body.slug, maxHashedTextLength);
    reader.readTruncated("name", body.name, maxHashedTextLength);
    reader.readTruncated("kind", body.kind);
}

static void readFields(const RecordReader& reader, TapeDocument& document)
{
    reader.read("id", document.id);
    reader.readTruncated("kind", document.kind);
    reader.readTruncated("title", document.title);
    reader.read("mime_type", document.mimeType);
    reader.read("url", document.url);
}

static void readFields(const RecordReader& reader, Tape& tape)
{
    reader.read("id", tape.id);
    reader.readTruncated("title", tape.title, maxHashedTextLength);
    reader.readTruncated("meeting_date", tape.meetingDate);
    reader.read("market", tape.market);
    reader.read("body", tape.body);
    reader.read("stream_url", tape.streamURLPath);
    reader.read("size_bytes", tape.sizeBytes);
    reader.read("has_agenda", tape.hasAgenda);
    reader.read("has_transcript", tape.hasTranscript);
    reader.read("video_url", tape.sourceURL);
    reader.readTruncated("location", tape.location);
    reader.read("documents", tape.documents);
}

static void readFields(const RecordReader& reader, TapePage& page)
{
    reader.read("total", page.total);
    reader.read("page", page.page);
    reader.read("per_page", page.perPage);
    reader.read("items", page.items);
}

static void readFields(const RecordReader& reader, TranscriptResult& transcript)
{
    reader.read("status", transcript.status);
    reader.read("text", transcript.text);
    reader.read("words", transcript.words);
}

template<typename Record>
tl::expected<Record, DecodingFailure> decodeRecord(const QByteArray& body)
{
    const auto document = JsonDocument::parse(body);
    if (!document)
        return tl::unexpected(DecodingFailure::Malformed);
    Record record;
    if (!convert(document->root(), record))
        return tl::unexpected(DecodingFailure::NotAnObject);
    return record;
}

template tl::expected<StationChannel, DecodingFailure> decodeRecord(const QByteArray&);
template tl::expected<NewsStatus, DecodingFailure> decodeRecord(const QByteArray&);
template tl::expected<TapeMarket, DecodingFailure> decodeRecord(const QByteArray&);
template tl::expected<CatalogSummary, DecodingFailure> decodeRecord(const QByteArray&);
template tl::expected<TVStatus, DecodingFailure> decodeRecord(const QByteArray&);
template tl::expected<TapeBody, DecodingFailure> decodeRecord(const QByteArray&);
template tl::expected<TapeDocument, DecodingFailure> decodeRecord(const QByteArray&);
template tl::expected<Tape, DecodingFailure> decodeRecord(const QByteArray&);
template tl::expected<TapePage, DecodingFailure> decodeRecord(const QByteArray&);
template tl::expected<TranscriptResult, DecodingFailure> decodeRecord(const QByteArray&);

} // namespace quillmere
