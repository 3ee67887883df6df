#include "MpvOpenGLRenderer.h"

#include "MpvCore.h"
#include "MpvEngine.h"

#include <QGuiApplication>
#include <QOpenGLContext>

#include <mpv/render_gl.h>

namespace quillmere {

MpvOpenGLRenderer::MpvOpenGLRenderer(std::shared_ptr<MpvEngine> engine, PictureListener listener)
    : m_engine(std::move(engine)), m_listener(std::move(listener))
{}

MpvOpenGLRenderer::~MpvOpenGLRenderer()
{
    mpv_render_context_free(m_context);
}

void MpvOpenGLRenderer::render(unsigned framebuffer, QSize pixels)
{
    if (!m_context && (m_failed || !create()))
        return;
    mpv_render_context_update(m_context);
    mpv_opengl_fbo target{int(framebuffer), pixels.width(), pixels.height(), 0};
    int flipped = 1;
    int wait = 0;
    mpv_render_param parameters[] = {{MPV_RENDER_PARAM_OPENGL_FBO, &target},
                                     {MPV_RENDER_PARAM_FLIP_Y, &flipped},
                                     {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
                                     {MPV_RENDER_PARAM_INVALID, nullptr}};
    mpv_render_context_render(m_context, parameters);
}

bool MpvOpenGLRenderer::create()
{
    mpv_opengl_init_params functions{[](void*, const char* name) -> void* {
                                         return reinterpret_cast<void*>(
                                             QOpenGLContext::currentContext()->getProcAddress(name));
                                     },
                                     nullptr};
    char api[] = MPV_RENDER_API_TYPE_OPENGL;
    mpv_render_param parameters[] = {{MPV_RENDER_PARAM_API_TYPE, api},
                                     {MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &functions},
                                     {MPV_RENDER_PARAM_INVALID, nullptr},
                                     {MPV_RENDER_PARAM_INVALID, nullptr}};
    // Hardware decoding needs the X11 display to use frames without copying them.
    if (const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        parameters[2] = {MPV_RENDER_PARAM_X11_DISPLAY, x11->display()};
    MpvCore& core = m_engine->core();
    if (mpv_render_context_create(&m_context, core.handle(), parameters) < 0) {
        m_failed = true;
        core.listener().post([](VideoEngineListener& listener) {
            listener.onEngineFailed({VideoFailure::Cause::NoPicture, 0, QStringLiteral("no OpenGL renderer")});
        });
        return false;
    }
    mpv_render_context_set_update_callback(
        m_context,
        [](void* self) {
            static_cast<MpvOpenGLRenderer*>(self)->m_listener.post(
                [](const std::function<void()>& changed) { changed(); });
        },
        this);
    core.post([](MpvCore& target) { target.useOpenGLRenderer(); });
    core.listener().post([](VideoEngineListener& listener) { listener.onRendererReady(); });
    return true;
}

} // namespace quillmere
