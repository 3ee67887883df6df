#pragma once

#include <functional>
#include <memory>

class Clock;
class VideoPlayer;

/** How a screen makes the players that it shows; the clock outlives them. */
using MakePlayer = std::function<std::shared_ptr<VideoPlayer>(Clock& clock)>;

/** A real player, which trusts the hub's certificates. Screen thread only. */
std::shared_ptr<VideoPlayer> makeStreamPlayer(Clock& clock);
