#pragma once

#include <QByteArray>

#include <tl/expected.hpp>

namespace quillmere {

/** Why a body could not be decoded as a record. */
enum class DecodingFailure {
    Malformed,  ///< the body is not a JSON document
    NotAnObject ///< the document's value is not an object
};

/**
 * Decodes a body as one of the hub's records: TVStatus, NewsStatus, CatalogSummary, StationChannel, TapePage, Tape,
 * TapeMarket, TapeBody, TapeDocument or TranscriptResult. A value inside the object never makes decoding fail: a value
 * of the wrong type leaves its field at the default, and one wrong element leaves the whole list or map at the default.
 * Thread-safe.
 */
template<typename Record>
tl::expected<Record, DecodingFailure> decodeRecord(const QByteArray& body);

} // namespace quillmere
