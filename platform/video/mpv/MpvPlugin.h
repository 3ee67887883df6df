#pragma once

#include "VideoPlugin.h"

#include <QObject>

namespace quillmere {

/** Root object of the plug-in: creates engines that use libmpv. Screen thread only. */
class MpvPlugin : public QObject, public VideoPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QUILLMERE_VIDEO_PLUGIN)
    Q_INTERFACES(quillmere::VideoPlugin)

public:
    MpvPlugin();
    std::shared_ptr<VideoEngine> createEngine(const VideoOptions& options,
                                              const Messenger<VideoEngineListener>& listener) override;
    bool waitForEngines(std::chrono::milliseconds limit) override;
};

} // namespace quillmere
