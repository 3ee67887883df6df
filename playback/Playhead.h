#pragma once

#include "Clock.h"
#include "Scrub.h"
#include "VideoPlayer.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

/**
 * Where the viewer is on a recording, and how he moves along it. While he scrubs, the picture stands still and the
 * position alone moves. Screen thread only; its owner is told of every step of a scrub and outlives it, as does the
 * clock; the player may go first. Without a player, or on what cannot be sought, nothing moves.
 */
class Playhead
{
public:
    Playhead(Clock& clock, std::function<void()> moved);

    /** Drops a scrub of the player before. */
    void setPlayer(VideoPlayer* player);

    /** Seconds; where it would play on if the scrub ended now. */
    double position() const;

    bool isScrubbing() const { return m_scrub.has_value(); }
    /** Of a scrub, in multiples of real time; negative for backward, 0 while there is none. */
    int speed() const;

    /** Goes on `seconds` from the position, or back; where a seek is under way, from where that will end. */
    void skip(double seconds);

    /** A button is held: 1 for forward, -1 for backward. */
    void scrub(int direction);
    /** It is let go: goes to where the scrub has come, and plays on if it was playing. */
    void letGo();
    /** Forgets a scrub. */
    void drop();

private:
    bool canMove() const;
    double bounded(double from, double to) const;
    void waitForNextStep();

    Clock& m_clock;
    std::function<void()> m_moved;
    QPointer<VideoPlayer> m_player;
    std::optional<Scrub> m_scrub;
    std::unique_ptr<Clock::Timer> m_nextStep;
};
