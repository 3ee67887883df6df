#pragma once

#include <QSize>

/**
 * Draws the pictures of an engine with OpenGL. Made, used and destroyed on the scene graph's render thread, with its
 * OpenGL context current; it holds the engine until then.
 */
class OpenGLRenderer
{
public:
    virtual ~OpenGLRenderer() = default;

    /** Draws the picture of this moment into a framebuffer object, letterboxed with black; black before the first. */
    virtual void render(unsigned framebuffer, QSize pixels) = 0;
};
