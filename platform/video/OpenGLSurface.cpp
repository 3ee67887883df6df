#include "OpenGLSurface.h"

#include <QOpenGLFramebufferObject>
#include <QQuickOpenGLUtils>

namespace quillmere {

/** The part on the render thread. Only `synchronize` accesses the item, while the screen thread is blocked. */
class OpenGLSurface::FramebufferRenderer : public QQuickFramebufferObject::Renderer
{
public:
    explicit FramebufferRenderer(std::unique_ptr<OpenGLRenderer> renderer) : m_renderer(std::move(renderer)) {}

    QOpenGLFramebufferObject* createFramebufferObject(const QSize&) override
    {
        return new QOpenGLFramebufferObject(m_pixels.expandedTo({1, 1}));
    }

    void synchronize(QQuickFramebufferObject* item) override
    {
        const QSize pixels = static_cast<OpenGLSurface*>(item)->m_pixels;
        if (m_pixels == pixels)
            return;
        m_pixels = pixels;
        if (framebufferObject())
            invalidateFramebufferObject();
    }

    void render() override
    {
        m_renderer->render(framebufferObject()->handle(), framebufferObject()->size());
        QQuickOpenGLUtils::resetOpenGLState();
    }

private:
    std::unique_ptr<OpenGLRenderer> m_renderer;
    QSize m_pixels;
};

OpenGLSurface::OpenGLSurface(std::shared_ptr<VideoEngine> engine, QQuickItem* view)
    : QQuickFramebufferObject(view), m_engine(std::move(engine)),
      m_onPictureChanged(std::make_shared<std::function<void()>>([this] { update(); }))
{
    setTextureFollowsItemSize(false);
    setMirrorVertically(true);
}

void OpenGLSurface::resize(QSizeF size, QSize pixels)
{
    setSize(size);
    if (m_pixels == pixels)
        return;
    m_pixels = pixels;
    update();
}

QQuickFramebufferObject::Renderer* OpenGLSurface::createRenderer() const
{
    return new FramebufferRenderer(m_engine->createOpenGLRenderer(PictureListener(m_onPictureChanged)));
}

} // namespace quillmere
