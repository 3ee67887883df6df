#pragma once

#include "MediaTrack.h"
#include "OpenGLRenderer.h"
#include "SeekTolerance.h"
#include "SoftwareRenderer.h"
#include "VideoFailure.h"

#include <QUrl>

#include <memory>

namespace quillmere {

/** What an engine loads. A plain value. */
struct VideoLoad
{
    int id = 0; ///< passed to each callback that concerns this load
    QUrl url;
    double startAt = 0; ///< seconds; the first picture is at this position or less than a second after it
    bool isLive = false;
    bool isPaused = false;
};

/**
 * Receives the events of an engine, on the screen thread, each from the event loop, as a callback may destroy the
 * listener. `loadId` is the id of the load. The callbacks of a load come in this order: its properties,
 * `onPictureShown` once, positions; after `onEndOfFile` or `onLoadFailed` none.
 */
class VideoEngineListener
{
public:
    virtual ~VideoEngineListener() = default;

    virtual void onEngineReady() = 0;   ///< renderers can be created
    virtual void onRendererReady() = 0; ///< `load` can be called
    virtual void onEngineFailed(const VideoFailure& failure) = 0;

    /** The first picture of a load, and its position; not finite if the position is unknown. */
    virtual void onPictureShown(int loadId, double seconds) = 0;
    virtual void onPositionChanged(int loadId, double seconds) = 0;
    virtual void onDurationKnown(int loadId, double seconds) = 0;     ///< not called while a recording still grows
    virtual void onBufferedToChanged(int loadId, double seconds) = 0; ///< at most a few times a second
    virtual void onSeekableKnown(int loadId, bool seekable) = 0;
    virtual void onTracksChanged(int loadId, const QList<MediaTrack>& tracks) = 0;
    virtual void onWaitingChanged(int loadId, bool waiting) = 0; ///< playback waits for data

    /**
     * A seek shows its picture, at `seconds`, which is not finite if unknown. Of several pending seeks only the last
     * must be reported.
     */
    virtual void onSeekFinished(int loadId, int seekId, double seconds) = 0;

    virtual void onDataSkipped(int loadId) = 0; ///< segments that the server did not deliver were skipped
    virtual void onEndOfFile(int loadId) = 0;   ///< the data ended, perhaps before the end of the recording
    virtual void onLoadFailed(int loadId, const VideoFailure& failure) = 0;
};

/**
 * Plays streams; created by the plug-in. Every function is called on the screen thread and returns at once; the work is
 * done on the engine's own thread. Releasing the last reference stops that thread. Each renderer has a reference.
 */
class VideoEngine
{
public:
    virtual ~VideoEngine() = default;

    /**
     * Stops the current stream and plays this one, a live stream at its live edge. Track selections are reset. This and
     * the functions below may be called only after `onRendererReady`, except `setPaused` and `setWaitsForData`.
     */
    virtual void load(const VideoLoad& load) = 0;
    virtual void stop() = 0;
    virtual void setPaused(bool paused) = 0;

    /** Whether playback waits until some seconds are buffered when data runs out. Initially true. */
    virtual void setWaitsForData(bool waits) = 0;

    /** Only after the first picture of the load. Replaces earlier seeks. Ignored if it is not the current load. */
    virtual void seek(int loadId, int seekId, double seconds, SeekTolerance tolerance) = 0;

    /** Selects a track of a kind; `MediaTrack::none` selects none. */
    virtual void selectTrack(MediaTrack::Kind kind, int id) = 0;

    /** After `onEngineReady`, at most one renderer per engine. The listener is called for each new picture. */
    virtual std::unique_ptr<SoftwareRenderer> createSoftwareRenderer(PictureListener listener) = 0;
    virtual std::unique_ptr<OpenGLRenderer> createOpenGLRenderer(PictureListener listener) = 0;
};

} // namespace quillmere
