#include "SoftwareSurface.h"

#include "VideoEngine.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRenderNode>

namespace quillmere {

namespace {

/** The picture in the scene. It is drawn at whole device pixels, unscaled unless the view was just resized. */
class PictureNode : public QSGRenderNode
{
public:
    explicit PictureNode(QQuickWindow* window) : m_window(window) {}

    void show(const QImage& picture, const QRectF& rect)
    {
        m_picture = picture;
        m_rect = rect;
        markDirty(DirtyMaterial);
    }

    QRectF rect() const override { return m_rect; }
    RenderingFlags flags() const override { return BoundedRectRendering | OpaqueRendering; }

    void render(const RenderState* state) override
    {
        auto* const painter = static_cast<QPainter*>(
            m_window->rendererInterface()->getResource(m_window, QSGRendererInterface::PainterResource));
        if (!painter)
            return;
        // Opaque items in front are not repainted, so nothing may be painted outside the region being repainted.
        if (const QRegion* const region = state->clipRegion(); region && !region->isEmpty())
            painter->setClipRegion(*region, Qt::ReplaceClip);
        const qreal ratio = painter->device()->devicePixelRatio();
        const QRectF shown = matrix()->mapRect(m_rect);
        const QRectF pixels(QRectF(shown.topLeft() * ratio, shown.size() * ratio).toRect());
        painter->resetTransform();
        painter->setOpacity(inheritedOpacity());
        const QRectF target(pixels.topLeft() / ratio, pixels.size() / ratio);
        if (m_picture.isNull())
            painter->fillRect(target, Qt::black);
        else
            painter->drawImage(target, m_picture, m_picture.rect());
    }

private:
    QQuickWindow* m_window;
    QImage m_picture;
    QRectF m_rect;
};

} // namespace

SoftwareSurface::SoftwareSurface(VideoEngine& engine, QQuickItem* view)
    : QQuickItem(view), m_onPictureChanged(std::make_shared<std::function<void()>>([this] { update(); })),
      m_renderer(engine.createSoftwareRenderer(PictureListener(m_onPictureChanged)))
{
    setFlag(ItemHasContents);
}

void SoftwareSurface::resize(QSizeF size, QSize pixels)
{
    setSize(size);
    if (m_pixels == pixels)
        return;
    m_pixels = pixels;
    m_renderer->setSize(pixels);
}

QSGNode* SoftwareSurface::updatePaintNode(QSGNode* node, UpdatePaintNodeData*)
{
    auto* const picture = node ? static_cast<PictureNode*>(node) : new PictureNode(window());
    picture->show(m_renderer->picture(), boundingRect());
    return picture;
}

} // namespace quillmere
