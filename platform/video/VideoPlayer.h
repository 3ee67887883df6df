#pragma once

#include "VideoFailure.h"

#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>

class VideoEngine;

/**
 * Plays one stream at a time. Screen thread only; whoever made it owns it. A VideoView shows its picture and may go
 * before or after it; a player is shown by one view for the whole of its life.
 */
class VideoPlayer : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Players are made in C++.")
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    Q_PROPERTY(bool waiting READ isWaiting NOTIFY waitingChanged)
    Q_PROPERTY(double position READ position NOTIFY positionChanged)
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged)

public:
    enum class State {
        Idle,    ///< nothing loaded
        Loading, ///< no picture yet
        Playing,
        Paused,
        Ended, ///< played to its true end
        Failed ///< `failed` has told why
    };
    Q_ENUM(State)

    using QObject::QObject;

    /** Lets go of what played and loads a stream, which starts at `startAt` seconds; 0 is the top. */
    virtual void load(const QUrl& url, double startAt = 0) = 0;

    /** A player wants to play from the start; pausing before or while it loads holds the first picture. */
    virtual void play() = 0;
    virtual void pause() = 0;

    /** Lets go of the stream; the player is Idle again and can load another. */
    virtual void stop() = 0;

    virtual State state() const = 0;

    /** True while the picture stands still for want of data. */
    virtual bool isWaiting() const = 0;

    /** In seconds of play time; 0 until the picture is there. */
    virtual double position() const = 0;

    /** In seconds; 0 while it is not known. */
    virtual double duration() const = 0;

    /** What draws this player's picture; none before the first load, and `engineChanged` tells when it is there. */
    virtual std::shared_ptr<VideoEngine> engine() const = 0;

Q_SIGNALS:
    void stateChanged();
    void waitingChanged();
    void positionChanged();
    void durationChanged();
    void engineChanged();

    /** The way to the screen is open; a load that was waiting for it goes on. */
    void rendererReady();

    /** The first picture of the stream is there. Once a load, before any `positionChanged` but the return to 0. */
    void pictureShown();

    /** The stream was played to its end: the position had come within 2 seconds of the duration. */
    void ended();

    void failed(const VideoFailure& failure);
};
