#pragma once

#include <chrono>

class MpvCore;

/** The cores that have not ended, in the order of their start. Any thread. */
namespace RunningCores {

void enter(const MpvCore* core);
void leave(const MpvCore* core);

/** Waits until the cores before this one have ended, or a second has passed. */
void waitForTurn(const MpvCore* core);

/** Waits until every core has ended, or `limit` has passed and the answer is false. */
bool waitForAll(std::chrono::milliseconds limit);

} // namespace RunningCores
