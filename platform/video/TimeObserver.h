#pragma once

namespace quillmere {

/**
 * A registration with a player, returned by `VideoPlayer::addPeriodicTimeObserver`. Destroying it unregisters the
 * callback. The caller owns it; it may outlive the player. Screen thread only.
 */
class TimeObserver
{
public:
    TimeObserver() = default;
    virtual ~TimeObserver() = default;
    TimeObserver(const TimeObserver&) = delete;
    TimeObserver& operator=(const TimeObserver&) = delete;
};

} // namespace quillmere
