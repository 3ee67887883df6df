#include "TransportStream.h"

#include <cstddef>

namespace quillmere::demo {

namespace {

constexpr std::size_t packetSize = 188;
constexpr unsigned char syncByte = 0x47;
constexpr std::uint64_t clockMask = (std::uint64_t{1} << 33) - 1; // timestamps have 33 bits

struct Packet
{
    unsigned char* bytes;

    std::size_t pid() const { return static_cast<std::size_t>((bytes[1] & 0x1F) << 8 | bytes[2]); }
    bool startsPes() const { return bytes[1] & 0x40; }
    bool hasAdaptation() const { return bytes[3] & 0x20; }
    bool hasPayload() const { return bytes[3] & 0x10; }
    std::size_t payloadAt() const { return hasAdaptation() ? std::size_t{5} + bytes[4] : 4; }
};

/// Calls `visit` with each packet. Stops at the first data that is not a packet.
template<typename Visit>
void forEachPacket(unsigned char* bytes, std::size_t size, Visit visit)
{
    for (std::size_t at = 0; at + packetSize <= size && bytes[at] == syncByte; at += packetSize) {
        visit(Packet{bytes + at});
    }
}

/// Shifts the program clock reference (PCR): 33 bits, the last of which shares its byte with other fields.
void shiftClock(const Packet& packet, std::uint64_t ticks)
{
    constexpr unsigned char hasClock = 0x10;
    if (!packet.hasAdaptation() || packet.bytes[4] < 7 || !(packet.bytes[5] & hasClock)) {
        return;
    }
    unsigned char* b = packet.bytes + 6;
    std::uint64_t clock = std::uint64_t{b[0]} << 25 | std::uint64_t{b[1]} << 17 | std::uint64_t{b[2]} << 9 |
                          std::uint64_t{b[3]} << 1 | std::uint64_t{b[4]} >> 7;
    clock = (clock + ticks) & clockMask;
    b[0] = static_cast<unsigned char>(clock >> 25);
    b[1] = static_cast<unsigned char>(clock >> 17);
    b[2] = static_cast<unsigned char>(clock >> 9);
    b[3] = static_cast<unsigned char>(clock >> 1);
    b[4] = static_cast<unsigned char>((b[4] & 0x7F) | (clock & 1) << 7);
}

/// Shifts a PTS or DTS of five bytes: 3, 15 and 15 bits, each followed by a marker bit.
void shiftTimestamp(unsigned char* b, std::uint64_t ticks)
{
    std::uint64_t stamp = std::uint64_t{static_cast<unsigned char>(b[0] >> 1 & 7)} << 30 | std::uint64_t{b[1]} << 22 |
                          std::uint64_t{static_cast<unsigned char>(b[2] >> 1)} << 15 | std::uint64_t{b[3]} << 7 |
                          std::uint64_t{b[4]} >> 1;
    stamp = (stamp + ticks) & clockMask;
    b[0] = static_cast<unsigned char>((b[0] & 0xF1) | (stamp >> 30 & 7) << 1);
    b[1] = static_cast<unsigned char>(stamp >> 22);
    b[2] = static_cast<unsigned char>((stamp >> 15 & 0x7F) << 1 | 1);
    b[3] = static_cast<unsigned char>(stamp >> 7);
    b[4] = static_cast<unsigned char>((stamp & 0x7F) << 1 | 1);
}

void shiftPesTimestamps(const Packet& packet, std::uint64_t ticks)
{
    constexpr std::size_t timestampsEnd = 19; // bytes of a PES header up to the end of PTS and DTS
    const std::size_t at = packet.payloadAt();
    if (!packet.startsPes() || !packet.hasPayload() || at + timestampsEnd > packetSize) {
        return;
    }
    unsigned char* pes = packet.bytes + at;
    const bool isPes = pes[0] == 0 && pes[1] == 0 && pes[2] == 1;
    const bool isMedia = pes[3] == 0xBD || (pes[3] >= 0xC0 && pes[3] <= 0xEF);
    if (!isPes || !isMedia) {
        return;
    }
    if (pes[7] & 0x80) {
        shiftTimestamp(pes + 9, ticks);
    }
    if ((pes[7] & 0xC0) == 0xC0) {
        shiftTimestamp(pes + 14, ticks);
    }
}

} // namespace

void countPackets(const std::string& stream, PacketCounts& counts)
{
    std::string copy = stream;
    forEachPacket(reinterpret_cast<unsigned char*>(copy.data()), copy.size(), [&](const Packet& packet) {
        if (packet.hasPayload()) {
            ++counts[packet.pid()];
        }
    });
}

std::string shiftedStream(std::string stream, std::uint64_t ticks, std::uint64_t loops, const PacketCounts& counts)
{
    forEachPacket(reinterpret_cast<unsigned char*>(stream.data()), stream.size(), [&](const Packet& packet) {
        const std::uint64_t counter = (packet.bytes[3] & 0x0F) + loops * counts[packet.pid()];
        packet.bytes[3] = static_cast<unsigned char>((packet.bytes[3] & 0xF0) | (counter & 0x0F));
        shiftClock(packet, ticks);
        shiftPesTimestamps(packet, ticks);
    });
    return stream;
}

} // namespace quillmere::demo
