#pragma once

#include "OpenGLRenderer.h"
#include "SoftwareRenderer.h"
#include "VideoFailure.h"

#include <QUrl>

#include <memory>

/** What an engine reports. Called on the screen thread; `load` is the number that the load was given. */
class VideoEngineListener
{
public:
    virtual ~VideoEngineListener() = default;

    virtual void engineReady() = 0;   ///< renderers can be made
    virtual void rendererReady() = 0; ///< loads can be given
    virtual void engineFailed(const VideoFailure& failure) = 0;

    virtual void pictureShown(int load) = 0;
    virtual void positionMoved(int load, double seconds) = 0;
    virtual void durationKnown(int load, double seconds) = 0;
    virtual void waitingChanged(int load, bool waiting) = 0;
    virtual void endOfFile(int load) = 0; ///< no more data came, which is not yet the end of play
    virtual void loadFailed(int load, const VideoFailure& failure) = 0;
};

/**
 * The core of a player, from the plug-in. Every function is called on the screen thread and returns at once; the work
 * is done on the engine's own thread. Letting go of the last reference ends it there too; its renderers hold one each.
 */
class VideoEngine
{
public:
    virtual ~VideoEngine() = default;

    /** Plays `url` from `startAt` seconds; what it reports carries the number `load`. Only after `rendererReady`. */
    virtual void load(int load, const QUrl& url, double startAt) = 0;
    virtual void setPaused(bool paused) = 0;
    virtual void stop() = 0;

    /** One renderer an engine, and after `engineReady`. `changed` is called on the screen thread for each new picture. */
    virtual std::unique_ptr<SoftwareRenderer> makeSoftwareRenderer(PictureListener changed) = 0;
    virtual std::unique_ptr<OpenGLRenderer> makeOpenGLRenderer(PictureListener changed) = 0;
};
