#pragma once

#include "VideoEngine.h"
#include "VideoSurface.h"

#include <QQuickFramebufferObject>

/**
 * Shows pictures drawn by OpenGL into a texture of the view's size in pixels. Screen thread only; the renderer that it
 * makes belongs to the scene graph's render thread.
 */
class OpenGLSurface : public QQuickFramebufferObject, public VideoSurface
{
    Q_OBJECT

public:
    OpenGLSurface(std::shared_ptr<VideoEngine> engine, QQuickItem* view);

    void fit(QSizeF size, QSize pixels) override;
    Renderer* createRenderer() const override;

private:
    class Painter;

    std::shared_ptr<VideoEngine> m_engine;
    std::shared_ptr<std::function<void()>> m_changed;
    QSize m_pixels;
};
