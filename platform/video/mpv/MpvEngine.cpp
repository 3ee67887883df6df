#include "MpvEngine.h"

#include "MpvCore.h"
#include "MpvOpenGLRenderer.h"
#include "MpvSoftwareRenderer.h"

namespace quillmere {

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

void MpvEngine::seek(int loadId, int seekId, double seconds, SeekTolerance tolerance)
{
    m_core->post([=](MpvCore& core) { core.seek(loadId, seekId, seconds, tolerance); });
}

void MpvEngine::selectTrack(MediaTrack::Kind kind, int id)
{
    m_core->post([kind, id](MpvCore& core) { core.selectTrack(kind, id); });
}

std::unique_ptr<SoftwareRenderer> MpvEngine::createSoftwareRenderer(PictureListener listener)
{
    return std::make_unique<MpvSoftwareRenderer>(shared_from_this(), std::move(listener));
}

std::unique_ptr<OpenGLRenderer> MpvEngine::createOpenGLRenderer(PictureListener listener)
{
    return std::make_unique<MpvOpenGLRenderer>(shared_from_this(), std::move(listener));
}

} // namespace quillmere
