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

    void load(int load, const QUrl& url, double startAt) override;
    void setPaused(bool paused) override;
    void stop() override;
    std::unique_ptr<SoftwareRenderer> makeSoftwareRenderer(PictureListener changed) override;
    std::unique_ptr<OpenGLRenderer> makeOpenGLRenderer(PictureListener changed) override;

    MpvCore& core() const { return *m_core; }

private:
    std::shared_ptr<MpvCore> m_core;
};
