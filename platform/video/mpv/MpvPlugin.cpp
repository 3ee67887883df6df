#include "MpvPlugin.h"

#include "AlsaLog.h"
#include "MpvCore.h"
#include "MpvEngine.h"
#include "RunningCores.h"

namespace quillmere {

MpvPlugin::MpvPlugin()
{
    logAlsaMessages();
}

std::shared_ptr<VideoEngine> MpvPlugin::createEngine(const VideoOptions& options,
                                                     const Messenger<VideoEngineListener>& listener)
{
    return std::make_shared<MpvEngine>(MpvCore::start(options, listener));
}

bool MpvPlugin::waitForEngines(std::chrono::milliseconds limit)
{
    return RunningCores::waitForAll(limit);
}

} // namespace quillmere
