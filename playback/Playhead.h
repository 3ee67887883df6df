#pragma once

#include "Clock.h"
#include "Scrub.h"
#include "VideoPlayer.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace quillmere {

/**
 * The viewer's position in a recording: skips and scrubs. During a scrub the picture stands still and only the position
 * moves. Skips and scrubs stop shortly before the end. `onMoved` is called at the start of a scrub, at every step and
 * in endScrub(), but not in cancelScrub(). Without an item that can be sought, skip() and startScrub() do nothing.
 * Screen thread only. What `onMoved` uses and the clock must outlive it; the player may be destroyed first.
 */
class Playhead
{
public:
    Playhead(Clock& clock, std::function<void()> onMoved);

    /** Cancels a scrub of the previous player. */
    void setPlayer(VideoPlayer* player);

    /** In seconds; during a scrub, where playback would continue if the scrub ended now. */
    double position() const;

    bool isScrubbing() const { return m_scrub.has_value(); }
    /** Speed of a scrub, in multiples of real time; negative for backward, 0 without a scrub. */
    int speed() const;

    /** Seeks by `seconds` from the position, or from the target of a seek in progress; negative for backward. */
    void skip(double seconds);

    /** Starts a scrub, for a held key: `direction` is 1 for forward, -1 for backward. */
    void startScrub(int direction);
    /** Seeks to the scrub's position, and plays if the player was playing before. */
    void endScrub();
    /** Ends a scrub without a seek. */
    void cancelScrub();

private:
    bool canSeek() const;
    double clamped(double from, double to) const;
    void scheduleNextStep();

    Clock& m_clock;
    std::function<void()> m_onMoved;
    QPointer<VideoPlayer> m_player;
    std::optional<Scrub> m_scrub;
    std::unique_ptr<Clock::Timer> m_nextStep;
};

} // namespace quillmere
