#include "MpvEngine.h"

#include "MpvCore.h"
#include "MpvOpenGLRenderer.h"
#include "MpvSoftwareRenderer.h"

MpvEngine::MpvEngine(std::shared_ptr<MpvCore> core) : m_core(std::move(core)) {}

MpvEngine::~MpvEngine()
{
    m_core->end();
}

void MpvEngine::load(int load, const QUrl& url, double startAt)
{
    m_core->post([load, address = url.toEncoded(), startAt](MpvCore& core) { core.load(load, address, startAt); });
}

void MpvEngine::setPaused(bool paused)
{
    m_core->post([paused](MpvCore& core) { core.setPaused(paused); });
}

void MpvEngine::stop()
{
    m_core->post([](MpvCore& core) { core.stop(); });
}

std::unique_ptr<SoftwareRenderer> MpvEngine::makeSoftwareRenderer(PictureListener changed)
{
    return std::make_unique<MpvSoftwareRenderer>(shared_from_this(), std::move(changed));
}

std::unique_ptr<OpenGLRenderer> MpvEngine::makeOpenGLRenderer(PictureListener changed)
{
    return std::make_unique<MpvOpenGLRenderer>(shared_from_this(), std::move(changed));
}
