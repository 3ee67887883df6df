#include "VideoView.h"

#include "OpenGLSurface.h"
#include "SoftwareSurface.h"
#include "VideoEngine.h"

#include <QQuickWindow>

namespace quillmere {

VideoView::VideoView(QQuickItem* parent) : QQuickItem(parent) {}

VideoView::~VideoView() = default;

void VideoView::setPlayer(VideoPlayer* player)
{
    if (m_player == player)
        return;
    if (m_player)
        m_player->disconnect(this);
    destroySurface();
    m_player = player;
    if (player) {
        connect(player, &VideoPlayer::engineChanged, this, [this] {
            destroySurface();
            createSurface();
        });
        connect(player, &QObject::destroyed, this, &VideoView::destroySurface);
    }
    createSurface();
    Q_EMIT playerChanged();
}

void VideoView::itemChange(ItemChange change, const ItemChangeData& value)
{
    if (change == ItemSceneChange) {
        destroySurface();
        createSurface();
    }
    QQuickItem::itemChange(change, value);
}

void VideoView::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    updateSurfaceSize();
}

void VideoView::createSurface()
{
    const auto engine = m_player ? m_player->engine() : nullptr;
    if (m_surface || !engine || !window())
        return;
    switch (window()->rendererInterface()->graphicsApi()) {
    case QSGRendererInterface::Software:
        m_surface = std::make_unique<SoftwareSurface>(*engine, this);
        break;
    case QSGRendererInterface::OpenGL:
        m_surface = std::make_unique<OpenGLSurface>(engine, this);
        break;
    default:
        return;
    }
    // The item is not notified when the scale of an ancestor changes, so its pixel size is computed before each frame.
    m_sizeConnection = connect(window(), &QQuickWindow::afterAnimating, this, &VideoView::updateSurfaceSize);
    updateSurfaceSize();
}

void VideoView::destroySurface()
{
    disconnect(m_sizeConnection);
    m_surface.reset();
}

void VideoView::updateSurfaceSize()
{
    if (!m_surface || !window())
        return;
    const QSizeF shown = mapRectToScene(boundingRect()).size() * window()->effectiveDevicePixelRatio();
    m_surface->resize(size(), shown.toSize());
}

} // namespace quillmere
