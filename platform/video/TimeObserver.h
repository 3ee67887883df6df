#pragma once

/**
 * A registration with a player, made by `VideoPlayer::addPeriodicTimeObserver`: once this is gone, the callback is not
 * called again. It belongs to whoever asked for it and may outlive the player. Screen thread only.
 */
class TimeObserver
{
public:
    TimeObserver() = default;
    virtual ~TimeObserver() = default;
    TimeObserver(const TimeObserver&) = delete;
    TimeObserver& operator=(const TimeObserver&) = delete;
};
