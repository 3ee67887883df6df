#pragma once

#include "VideoEngine.h"
#include "VideoOptions.h"

#include <QtPlugin>

#include <chrono>

/** What the plug-in offers; it stays loaded once it is. Screen thread only. */
class VideoPlugin
{
public:
    virtual ~VideoPlugin() = default;

    /** Starts an engine; it reports `engineReady` or `engineFailed` later. */
    virtual std::shared_ptr<VideoEngine> makeEngine(const VideoOptions& options,
                                                    const Messenger<VideoEngineListener>& listener) = 0;

    /** Waits for engines that were let go of and have not ended yet; false when some still run after `limit`. */
    virtual bool waitForEngines(std::chrono::milliseconds limit) = 0;
};

#define QUILLMERE_VIDEO_PLUGIN "quillmere.VideoPlugin/1"
Q_DECLARE_INTERFACE(VideoPlugin, QUILLMERE_VIDEO_PLUGIN)
