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

namespace quillmere {

class VideoEngine;

/**
 * Plays one item at a time, with sound. Screen thread only. Its creator owns it and may destroy it at any time, even in
 * one of its callbacks or signals. A VideoView shows its video, always the same one; either may be destroyed first. All
 * times are seconds of play time.
 */
class VideoPlayer : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Players are created in C++.")
    Q_PROPERTY(TimeControl timeControl READ timeControl NOTIFY timeControlChanged)
    Q_PROPERTY(bool waiting READ isWaiting NOTIFY waitingChanged)
    Q_PROPERTY(double position READ position NOTIFY positionChanged)
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(double bufferedTo READ bufferedTo NOTIFY bufferedToChanged)
    Q_PROPERTY(bool seekable READ isSeekable NOTIFY seekableChanged)

public:
    enum class TimeControl {
        Paused,        ///< paused by the viewer; also after the end, after a failure and without an item
        WaitingToPlay, ///< not paused, but `isWaiting`
        Playing
    };
    Q_ENUM(TimeControl)

    using SeekCallback = std::function<void(bool finished)>;

    using QObject::QObject;

    /** Stops the current item and loads another one, or none. The paused state does not change. */
    virtual void setItem(std::shared_ptr<PlayerItem> item) = 0;
    virtual std::shared_ptr<PlayerItem> item() const = 0;

    /** A new player is paused and shows the first picture. After the end, `play` starts again from the beginning. */
    virtual void play() = 0;
    virtual void pause() = 0;
    virtual TimeControl timeControl() const = 0;

    /** True while the picture waits for data: loading, buffering, seeking, reconnecting; even if paused. */
    virtual bool isWaiting() const = 0;

    /** Whether playback waits until some seconds are buffered when data runs out. Initially true. */
    virtual bool automaticallyWaitsToMinimizeStalling() const = 0;
    virtual void setAutomaticallyWaitsToMinimizeStalling(bool waits) = 0;

    /** Current position, or the target position while it loads or seeks; 0 without an item. */
    virtual double position() const = 0;

    /** 0 if unknown, for instance while the recording still grows. */
    virtual double duration() const = 0;

    /** End of the buffered data; never before `position`. */
    virtual double bufferedTo() const = 0;

    /** True only for a recording whose duration is known; never for a live item. */
    virtual bool isSeekable() const = 0;

    /**
     * Seeks to `seconds`, limited to at most 3 seconds before the end, so that the end is always played. Before the
     * first picture it sets the start position. `onFinished` is called from the event loop, never within this call:
     * with true when the picture is shown; with false if another seek or item replaces this one, or the item fails, is
     * live or missing. It is not called after the player is destroyed.
     */
    virtual void seek(double seconds, SeekTolerance tolerance, SeekCallback onFinished = {}) = 0;

    /**
     * Calls `callback` with the position after every `interval` of play time, and after a jump of the position of at
     * least that. Never called before the item's first picture. If the stream could not start or resume at the
     * requested position, it is not called before that position is reached. Ends when the returned observer is
     * destroyed.
     */
    [[nodiscard]] virtual std::unique_ptr<TimeObserver>
    addPeriodicTimeObserver(std::chrono::seconds interval, std::function<void(double seconds)> callback) = 0;

    /** The audio and subtitle tracks; empty until known. */
    virtual const QList<MediaTrack>& tracks() const = 0;

    /** Selects a track of a kind; `MediaTrack::none` selects none. Emits `tracksChanged` later. */
    virtual void select(MediaTrack::Kind kind, int id) = 0;

    /** Creates the renderers of this player's video; none before the first item is loaded. See `engineChanged`. */
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

    /** The renderer exists; a load that was waiting for it continues. */
    void rendererReady();

    /**
     * The first picture of a load is shown: once when the item starts, and again after each reconnection or restart.
     */
    void pictureShown();
};

} // namespace quillmere
