#include "MpvEngine.h"

#include "MpvCore.h"
#include "MpvOpenGLRenderer.h"
#include "MpvSoftwareRenderer.h"

MpvEngine::MpvEngine(std::shared_ptr<MpvCore> core) : m_core(std::move(core)) {}

MpvEngine::~MpvEngine()
{
    m_core->end();
}

void MpvEngine::load(const VideoLoad& load)
{
    m_core->post([load](MpvCore& core) { core.load(load); });
}

void MpvEngine::stop()
{
    m_core->post([](MpvCore& core) { core.stop(); });
}

void MpvEngine::setPaused(bool paused)
{
    m_core->post([paused](MpvCore& core) { core.setPaused(paused); });
}

void MpvEngine::setWaitsForData(bool waits)
{
    m_core->post([waits](MpvCore& core) { core.setWaitsForData(waits); });
}

void MpvEngine::seek(int load, int seek, double seconds, SeekTolerance tolerance)
{
    m_core->post([=](MpvCore& core) { core.seek(load, seek, seconds, tolerance); });
}

void MpvEngine::selectTrack(MediaTrack::Kind kind, int id)
{
    m_core->post([kind, id](MpvCore& core) { core.selectTrack(kind, id); });
}

std::unique_ptr<SoftwareRenderer> MpvEngine::makeSoftwareRenderer(PictureListener changed)
{
    return std::make_unique<MpvSoftwareRenderer>(shared_from_this(), std::move(changed));
}

std::unique_ptr<OpenGLRenderer> MpvEngine::makeOpenGLRenderer(PictureListener changed)
{
    return std::make_unique<MpvOpenGLRenderer>(shared_from_this(), std::move(changed));
}
