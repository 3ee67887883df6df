#pragma once

#include <functional>
#include <memory>

namespace quillmere {

class Clock;
class VideoPlayer;

/** Factory for the video players of a screen. The clock outlives the players. */
using CreatePlayer = std::function<std::shared_ptr<VideoPlayer>(Clock& clock)>;

/** Creates a real player, which trusts the certificates of the hub. Screen thread only. */
std::shared_ptr<VideoPlayer> createStreamPlayer(Clock& clock);

} // namespace quillmere
