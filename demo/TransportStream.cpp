#include "TransportStream.h"

#include <cstddef>

namespace demo {

namespace {

constexpr std::size_t packetSize = 188;
constexpr unsigned char syncByte = 0x47;
constexpr std::uint64_t clockMask = (std::uint64_t{1} << 33) - 1; // time stamps have 33 bits

struct Packet
{
    unsigned char* bytes;

    std::size_t pid() const { return static_cast<std::size_t>((bytes[1] & 0x1F) << 8 | bytes[2]); }
    bool startsUnit() const { return bytes[1] & 0x40; }
    bool hasAdaptation() const { return bytes[3] & 0x20; }
    bool hasPayload() const { return bytes[3] & 0x10; }
    std::size_t payloadAt() const { return hasAdaptation() ? std::size_t{5} + bytes[4] : 4; }
};

/// Calls `visit` with each packet; stops at anything that is not one.
template<typename Visit>
void eachPacket(unsigned char* bytes, std::size_t size, Visit visit)
{
    for (std::size_t at = 0; at + packetSize <= size && bytes[at] == syncByte; at += packetSize) {
        visit(Packet{bytes + at});
    }
}

/// The program clock: 33 bits, of which the last shares its byte with other fields.
void moveClock(const Packet& packet, std::uint64_t ticks)
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

/// A time stamp of five bytes: 3, 15 and 15 bits, each followed by a marker bit.
void moveStamp(unsigned char* b, std::uint64_t ticks)
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

void moveUnitStamps(const Packet& packet, std::uint64_t ticks)
{
    constexpr std::size_t stampsEnd = 19; // of a unit's header: both stamps
    const std::size_t at = packet.payloadAt();
    if (!packet.startsUnit() || !packet.hasPayload() || at + stampsEnd > packetSize) {
        return;
    }
    unsigned char* unit = packet.bytes + at;
    const bool isUnit = unit[0] == 0 && unit[1] == 0 && unit[2] == 1;
    const bool isMedia = unit[3] == 0xBD || (unit[3] >= 0xC0 && unit[3] <= 0xEF);
    if (!isUnit || !isMedia) {
        return;
    }
    if (unit[7] & 0x80) {
        moveStamp(unit + 9, ticks);
    }
    if ((unit[7] & 0xC0) == 0xC0) {
        moveStamp(unit + 14, ticks);
    }
}

} // namespace

void countPackets(const std::string& stream, PacketCounts& counts)
{
    std::string copy = stream;
    eachPacket(reinterpret_cast<unsigned char*>(copy.data()), copy.size(), [&](const Packet& packet) {
        if (packet.hasPayload()) {
            ++counts[packet.pid()];
        }
    });
}

std::string laterStream(std::string stream, std::uint64_t ticks, std::uint64_t loops, const PacketCounts& counts)
{
    eachPacket(reinterpret_cast<unsigned char*>(stream.data()), stream.size(), [&](const Packet& packet) {
        const std::uint64_t counter = (packet.bytes[3] & 0x0F) + loops * counts[packet.pid()];
        packet.bytes[3] = static_cast<unsigned char>((packet.bytes[3] & 0xF0) | (counter & 0x0F));
        moveClock(packet, ticks);
        moveUnitStamps(packet, ticks);
    });
    return stream;
}

} // namespace demo
