#include "VideoView.h"

#include "OpenGLSurface.h"
#include "SoftwareSurface.h"
#include "VideoEngine.h"

#include <QQuickWindow>

VideoView::VideoView(QQuickItem* parent) : QQuickItem(parent) {}

VideoView::~VideoView() = default;

void VideoView::setPlayer(VideoPlayer* player)
{
    if (m_player == player)
        return;
    if (m_player)
        m_player->disconnect(this);
    dropPicture();
    m_player = player;
    if (player) {
        connect(player, &VideoPlayer::engineChanged, this, [this] {
            dropPicture();
            showPicture();
        });
        connect(player, &QObject::destroyed, this, &VideoView::dropPicture);
    }
    showPicture();
    Q_EMIT playerChanged();
}

void VideoView::itemChange(ItemChange change, const ItemChangeData& value)
{
    if (change == ItemSceneChange) {
        dropPicture();
        showPicture();
    }
    QQuickItem::itemChange(change, value);
}

void VideoView::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    fitPicture();
}

void VideoView::showPicture()
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
    // An ancestor's scale changes without a word to this item, so its size in pixels is looked at before each frame.
    m_fitting = connect(window(), &QQuickWindow::afterAnimating, this, &VideoView::fitPicture);
    fitPicture();
}

void VideoView::dropPicture()
{
    disconnect(m_fitting);
    m_surface.reset();
}

void VideoView::fitPicture()
{
    if (!m_surface || !window())
        return;
    const QSizeF shown = mapRectToScene(boundingRect()).size() * window()->effectiveDevicePixelRatio();
    m_surface->fit(size(), shown.toSize());
}
