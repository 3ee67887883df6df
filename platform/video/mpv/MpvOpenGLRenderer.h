#pragma once

#include "OpenGLRenderer.h"
#include "SoftwareRenderer.h"

#include <memory>

struct mpv_render_context;

namespace quillmere {

class MpvEngine;

/** Draws with libmpv's OpenGL renderer, on the scene graph's render thread. */
class MpvOpenGLRenderer : public OpenGLRenderer
{
public:
    MpvOpenGLRenderer(std::shared_ptr<MpvEngine> engine, PictureListener listener);
    ~MpvOpenGLRenderer() override;

    void render(unsigned framebuffer, QSize pixels) override;

private:
    bool create();

    std::shared_ptr<MpvEngine> m_engine; ///< released after the context is freed
    const PictureListener m_listener;
    mpv_render_context* m_context = nullptr;
    bool m_failed = false;
};

} // namespace quillmere
