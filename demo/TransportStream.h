#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace demo {

/// Packets with a payload, counted by their PID: how far each continuity counter moves.
using PacketCounts = std::array<std::uint32_t, 0x2000>;

/// Adds the packets of `stream`, an MPEG transport stream of whole 188-byte packets, to `counts`.
void countPackets(const std::string& stream, PacketCounts& counts);

/// `stream` with its clock and time stamps moved on by `ticks` (90 kHz) and each continuity counter by
/// `loops` times its count, so that it plays on without a seam after `loops` rounds of what was counted.
std::string laterStream(std::string stream, std::uint64_t ticks, std::uint64_t loops, const PacketCounts& counts);

} // namespace demo
