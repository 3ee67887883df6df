#pragma once

#include "MediaTrack.h"
#include "OpenGLRenderer.h"
#include "SeekTolerance.h"
#include "SoftwareRenderer.h"
#include "VideoFailure.h"

#include <QUrl>

#include <memory>

/** What an engine is to load. A plain value. */
struct VideoLoad
{
    int number = 0; ///< what the engine reports of it carries this
    QUrl url;
    double startAt = 0; ///< seconds; the picture lands at or after it, by less than a second
    bool isLive = false;
    bool isPaused = false;
};

/**
 * What an engine reports. Called on the screen thread, once an event, as the listener may be gone after each call; `load`
 * is the number that the load was given. Of a load come, in this order: what is known of it, `pictureShown` once,
 * positions; nothing after `endOfFile` or `loadFailed`.
 */
class VideoEngineListener
{
public:
    virtual ~VideoEngineListener() = default;

    virtual void engineReady() = 0;   ///< renderers can be made
    virtual void rendererReady() = 0; ///< loads can be given
    virtual void engineFailed(const VideoFailure& failure) = 0;

    /** The first one, and its position; not finite where that is unknown. */
    virtual void pictureShown(int load, double seconds) = 0;
    virtual void positionMoved(int load, double seconds) = 0;
    virtual void durationKnown(int load, double seconds) = 0; ///< never of a recording that is still being made
    virtual void dataBuffered(int load, double upTo) = 0;     ///< seconds; a few times a second at most
    virtual void seekableKnown(int load, bool seekable) = 0;
    virtual void tracksKnown(int load, const QList<MediaTrack>& tracks) = 0; ///< again at each change
    virtual void waitingChanged(int load, bool waiting) = 0;                 ///< stands still for want of data

    /** The picture is there again, at `seconds`, if that is known; of several seeks under way the last alone need report. */
    virtual void seekDone(int load, int seek, double seconds) = 0;

    virtual void dataSkipped(int load) = 0; ///< segments were left out, as the server did not give them
    virtual void endOfFile(int load) = 0;   ///< no more data came, which is not yet the end of play
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

    /**
     * Lets go of what it plays and plays this; a live one at its live edge. The stream chooses its tracks anew.
     * Only after `rendererReady`, as everything below but `setPaused` and `setWaitsForData`.
     */
    virtual void load(const VideoLoad& load) = 0;
    virtual void stop() = 0;
    virtual void setPaused(bool paused) = 0;

    /** Whether playing waits for some seconds of data when it has run out of them; at first it does. */
    virtual void setWaitsForData(bool waits) = 0;

    /** Only after the picture of `load`; later seeks replace earlier ones. Dropped when another load has come. */
    virtual void seek(int load, int seek, double seconds, SeekTolerance tolerance) = 0;

    /** The track of a kind, or `MediaTrack::none`. */
    virtual void selectTrack(MediaTrack::Kind kind, int id) = 0;

    /** One renderer an engine, and after `engineReady`. `changed` is called on the screen thread for each new picture. */
    virtual std::unique_ptr<SoftwareRenderer> makeSoftwareRenderer(PictureListener changed) = 0;
    virtual std::unique_ptr<OpenGLRenderer> makeOpenGLRenderer(PictureListener changed) = 0;
};
