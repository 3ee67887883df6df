#pragma once

#include "VideoEngine.h"
#include "VideoSurface.h"

#include <QQuickFramebufferObject>

namespace quillmere {

/**
 * Shows frames that OpenGL draws into a texture of the view's size in device pixels. Screen thread only; the renderer
 * that it creates belongs to the scene graph's render thread.
 */
class OpenGLSurface : public QQuickFramebufferObject, public VideoSurface
{
    Q_OBJECT

public:
    OpenGLSurface(std::shared_ptr<VideoEngine> engine, QQuickItem* view);

    void resize(QSizeF size, QSize pixels) override;
    Renderer* createRenderer() const override;

private:
    class FramebufferRenderer;

    std::shared_ptr<VideoEngine> m_engine;
    std::shared_ptr<std::function<void()>> m_onPictureChanged;
    QSize m_pixels;
};

} // namespace quillmere
