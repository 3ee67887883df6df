#pragma once

#include <QByteArray>

#include <tl/expected.hpp>

/** Why a body is no record. */
enum class DecodingFailure {
    Malformed, ///< it is no JSON document
    NoObject   ///< its value is no object
};

/**
 * Decodes a body as one of the hub's records: TVStatus, NewsStatus, CatalogSummary, StationChannel, TapePage, Tape,
 * TapeMarket, TapeBody, TapeDocument or TranscriptResult. No value inside the object can make it fail; a value of the
 * wrong type leaves its field at the default, and one bad element does so to a whole list or map. Any thread.
 */
template<typename Record>
tl::expected<Record, DecodingFailure> decodeRecord(const QByteArray& body);
