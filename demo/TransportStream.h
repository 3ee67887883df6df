#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quillmere::demo {

/// The number of packets with a payload, by PID. Each such packet increments the PID's continuity counter.
using PacketCounts = std::array<std::uint32_t, 0x2000>;

/// Adds the packets of `stream`, an MPEG transport stream of whole 188-byte packets, to `counts`.
void countPackets(const std::string& stream, PacketCounts& counts);

/// `stream` with its program clock and timestamps increased by `ticks` (90 kHz), and each continuity counter by `loops`
/// times its count. The result continues without a break after the counted packets have been played `loops` times.
std::string shiftedStream(std::string stream, std::uint64_t ticks, std::uint64_t loops, const PacketCounts& counts);

} // namespace quillmere::demo
