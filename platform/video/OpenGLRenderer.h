#pragma once

#include <QSize>

namespace quillmere {

/**
 * Draws the frames of an engine with OpenGL. It is created, used and destroyed on the scene graph's render thread, with
 * that thread's OpenGL context current. It keeps a reference to the engine.
 */
class OpenGLRenderer
{
public:
    virtual ~OpenGLRenderer() = default;

    /** Draws the current frame into a framebuffer object, letterboxed with black. All black before the first frame. */
    virtual void render(unsigned framebuffer, QSize pixels) = 0;
};

} // namespace quillmere
