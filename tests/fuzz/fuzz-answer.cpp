#include "AnswerParser.h"
#include "Gunzip.h"

#include <algorithm>
#include <cstdint>

namespace {

struct Outcome
{
    int status = 0;
    int interimStatus = 0;
    QByteArray body;
    bool isWhole = false;
    bool isBroken = false;

    bool operator==(const Outcome&) const = default;
};

Outcome parsed(const QByteArray& bytes, qsizetype piece)
{
    AnswerParser parser;
    Outcome outcome;
    for (qsizetype offset = 0; offset < bytes.size(); offset += piece) {
        parser.add(bytes.mid(offset, piece));
        outcome.body += parser.takeBody();
    }
    parser.end();
    outcome.status = parser.status();
    outcome.interimStatus = parser.interimStatus();
    outcome.isWhole = parser.isWhole();
    outcome.isBroken = parser.isBroken();
    return outcome;
}

/** What unpacks, empty for what is not gzip; and whether it is whole. */
std::pair<QByteArray, bool> unpacked(const QByteArray& bytes, qsizetype piece)
{
    constexpr qint64 most = 100'000;
    Gunzip gunzip;
    QByteArray body;
    bool isGzip = true;
    for (qsizetype offset = 0; isGzip && offset < bytes.size() && body.size() <= most; offset += piece)
        isGzip = gunzip.add(bytes.mid(offset, piece), body, most);
    if (body.size() > most + 1)
        __builtin_trap();
    return {isGzip ? body : QByteArray(), isGzip && gunzip.isWhole()};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    // However the network cuts the bytes, the answer is the same.
    const qsizetype piece = data[0] % 16 + 1;
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
    const Outcome whole = parsed(bytes, std::max<qsizetype>(bytes.size(), 1));
    if (!(whole == parsed(bytes, piece)) || whole.isWhole == whole.isBroken)
        __builtin_trap();
    if (unpacked(bytes, std::max<qsizetype>(bytes.size(), 1)) != unpacked(bytes, piece))
        __builtin_trap();
    return 0;
}
