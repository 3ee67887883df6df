#pragma once

#include "VideoEngine.h"
#include "VideoOptions.h"

#include <QtPlugin>

#include <chrono>

namespace quillmere {

/** The interface of the video plug-in, which is never unloaded. Screen thread only. */
class VideoPlugin
{
public:
    virtual ~VideoPlugin() = default;

    /** Starts an engine, which later calls `onEngineReady` or `onEngineFailed`. */
    virtual std::shared_ptr<VideoEngine> createEngine(const VideoOptions& options,
                                                      const Messenger<VideoEngineListener>& listener) = 0;

    /** Waits until the threads of all released engines have ended; false if some still run after `limit`. */
    virtual bool waitForEngines(std::chrono::milliseconds limit) = 0;
};

} // namespace quillmere

#define QUILLMERE_VIDEO_PLUGIN "quillmere.VideoPlugin/1"
Q_DECLARE_INTERFACE(quillmere::VideoPlugin, QUILLMERE_VIDEO_PLUGIN)
