#pragma once

#include <chrono>

namespace quillmere {

class MpvCore;

/** The cores whose thread has not ended, in the order of their start. Any thread. */
namespace RunningCores {

void add(const MpvCore* core);
void remove(const MpvCore* core);

/**
 * Waits until all cores started before this one have ended, at most one second: the libraries send their log messages
 * to one core only.
 */
void waitForTurn(const MpvCore* core);

/** Waits until every core has ended; false if some still run after `limit`. */
bool waitForAll(std::chrono::milliseconds limit);

} // namespace RunningCores

} // namespace quillmere
