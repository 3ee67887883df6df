#pragma once

#include "VideoEngine.h"

namespace quillmere {

class MpvCore;

/**
 * An engine on libmpv, shared by the player and its renderers. It ends its core when the last of them releases it, on
 * that thread. So the core outlives every render context created from it.
 */
class MpvEngine : public VideoEngine, public std::enable_shared_from_this<MpvEngine>
{
public:
    explicit MpvEngine(std::shared_ptr<MpvCore> core);
    ~MpvEngine() override;

    void load(const VideoLoad& load) override;
    void stop() override;
    void setPaused(bool paused) override;
    void setWaitsForData(bool waits) override;
    void seek(int loadId, int seekId, double seconds, SeekTolerance tolerance) override;
    void selectTrack(MediaTrack::Kind kind, int id) override;
    std::unique_ptr<SoftwareRenderer> createSoftwareRenderer(PictureListener listener) override;
    std::unique_ptr<OpenGLRenderer> createOpenGLRenderer(PictureListener listener) override;

    MpvCore& core() const { return *m_core; }

private:
    std::shared_ptr<MpvCore> m_core;
};

} // namespace quillmere
