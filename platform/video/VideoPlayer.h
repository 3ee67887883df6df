#pragma once

#include "MediaTrack.h"
#include "PlayerItem.h"
#include "SeekTolerance.h"
#include "TimeObserver.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <functional>
#include <memory>

class VideoEngine;

/**
 * Plays one item at a time, with the sound on. Screen thread only; whoever made it owns it, and may destroy it at any
 * time, also inside what it calls. A VideoView shows its picture and may go before or after it; a player is shown by one
 * view for the whole of its life. Times are seconds of play time.
 */
class VideoPlayer : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Players are made in C++.")
    Q_PROPERTY(TimeControl timeControl READ timeControl NOTIFY timeControlChanged)
    Q_PROPERTY(bool waiting READ isWaiting NOTIFY waitingChanged)
    Q_PROPERTY(double position READ position NOTIFY positionChanged)
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(double bufferedTo READ bufferedTo NOTIFY bufferedToChanged)
    Q_PROPERTY(bool seekable READ isSeekable NOTIFY seekableChanged)

public:
    enum class TimeControl {
        Paused,        ///< the viewer's wish, and what is left after the end, a failure or without an item
        WaitingToPlay, ///< wants to play and `isWaiting`
        Playing
    };
    Q_ENUM(TimeControl)

    using SeekDone = std::function<void(bool finished)>;

    using QObject::QObject;

    /** Lets go of what played and starts to load another item, or none. Whether it plays or is paused stays as it is. */
    virtual void setItem(std::shared_ptr<PlayerItem> item) = 0;
    virtual std::shared_ptr<PlayerItem> item() const = 0;

    /** A player starts paused, with the first picture standing. At the end of play, `play` starts from the top. */
    virtual void play() = 0;
    virtual void pause() = 0;
    virtual TimeControl timeControl() const = 0;

    /** True while there is nothing to see move for want of data: loading, buffering, seeking, reconnecting; also paused. */
    virtual bool isWaiting() const = 0;

    /** Whether, when data runs out, playing waits until there are some seconds of it again; at first it does. */
    virtual bool automaticallyWaitsToMinimizeStalling() const = 0;
    virtual void setAutomaticallyWaitsToMinimizeStalling(bool waits) = 0;

    /** Where it plays; where it is going to be while it loads or seeks; 0 without an item. */
    virtual double position() const = 0;

    /** 0 while it is not known, as that of a recording that is still being made. */
    virtual double duration() const = 0;

    /** Up to where data is there; never before `position`. */
    virtual double bufferedTo() const = 0;

    /** A recording whose length is known; never a live item. */
    virtual bool isSeekable() const = 0;

    /**
     * Goes to `seconds`, bounded to the recording (not nearer to its end than 3 seconds, so that the end is always
     * played). Before the first picture it is where the item starts. `done` is called from the event loop, never inside
     * a call: true once the picture is there; false when another seek or item came in between, the item failed, is live,
     * or there is none; not at all once the player is gone.
     */
    virtual void seek(double seconds, SeekTolerance tolerance, SeekDone done = {}) = 0;

    /**
     * Calls `callback` with the position after every `interval` of play time, and at a jump of the position of at least
     * that; never before the item's first picture is there, nor before the position where it was to start or to go on
     * when the stream could not get there. For as long as the answer is held.
     */
    [[nodiscard]] virtual std::unique_ptr<TimeObserver>
    addPeriodicTimeObserver(std::chrono::seconds interval, std::function<void(double seconds)> callback) = 0;

    /** What there is to choose from; empty until it is known. */
    virtual const QList<MediaTrack>& tracks() const = 0;

    /** Selects the track of a kind, or `MediaTrack::none` of it. `tracksChanged` follows. */
    virtual void select(MediaTrack::Kind kind, int id) = 0;

    /** What draws this player's picture; none before the first item, and `engineChanged` tells when it is there. */
    virtual std::shared_ptr<VideoEngine> engine() const = 0;

Q_SIGNALS:
    void itemChanged();
    void timeControlChanged();
    void waitingChanged();
    void positionChanged();
    void durationChanged();
    void bufferedToChanged();
    void seekableChanged();
    void tracksChanged();
    void engineChanged();

    /** The way to the screen is open; a load that was waiting for it goes on. */
    void rendererReady();

    /** A load's first picture is there: the item's first, and again after each reconnection. */
    void pictureShown();
};
