#pragma once

#include "VideoEngine.h"

class MpvCore;

/**
 * What the player and its renderers hold of a core: the last of them to go, on whatever thread, ends it.
 * So the core outlives every render context made from it.
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
    void seek(int load, int seek, double seconds, SeekTolerance tolerance) override;
    void selectTrack(MediaTrack::Kind kind, int id) override;
    std::unique_ptr<SoftwareRenderer> makeSoftwareRenderer(PictureListener changed) override;
    std::unique_ptr<OpenGLRenderer> makeOpenGLRenderer(PictureListener changed) override;

    MpvCore& core() const { return *m_core; }

private:
    std::shared_ptr<MpvCore> m_core;
};
