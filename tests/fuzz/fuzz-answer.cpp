#include "Gunzip.h"
#include "ResponseParser.h"

#include <algorithm>
#include <cstdint>

namespace quillmere {

namespace {

struct Outcome
{
    int status = 0;
    int interimStatus = 0;
    QByteArray body;
    bool isComplete = false;
    bool hasFailed = false;

    bool operator==(const Outcome&) const = default;
};

Outcome parsed(const QByteArray& bytes, qsizetype piece)
{
    ResponseParser parser;
    Outcome outcome;
    for (qsizetype offset = 0; offset < bytes.size(); offset += piece) {
        parser.add(bytes.mid(offset, piece));
        outcome.body += parser.takeBody();
    }
    parser.end();
    outcome.status = parser.status();
    outcome.interimStatus = parser.interimStatus();
    outcome.isComplete = parser.isComplete();
    outcome.hasFailed = parser.hasFailed();
    return outcome;
}

/** Returns the decompressed body, empty if the bytes are no gzip stream, and whether the stream is complete. */
std::pair<QByteArray, bool> unpacked(const QByteArray& bytes, qsizetype piece)
{
    constexpr qint64 limit = 100'000;
    Gunzip gunzip;
    QByteArray body;
    bool isGzip = true;
    for (qsizetype offset = 0; isGzip && offset < bytes.size() && body.size() <= limit; offset += piece)
        isGzip = gunzip.add(bytes.mid(offset, piece), body, limit);
    if (body.size() > limit + 1)
        __builtin_trap();
    return {isGzip ? body : QByteArray(), isGzip && gunzip.isComplete()};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    // The answer is the same, whatever pieces the network cuts the bytes into.
    const qsizetype piece = data[0] % 16 + 1;
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
    const Outcome whole = parsed(bytes, std::max<qsizetype>(bytes.size(), 1));
    if (!(whole == parsed(bytes, piece)) || whole.isComplete == whole.hasFailed)
        __builtin_trap();
    if (unpacked(bytes, std::max<qsizetype>(bytes.size(), 1)) != unpacked(bytes, piece))
        __builtin_trap();
    return 0;
}

} // namespace quillmere
