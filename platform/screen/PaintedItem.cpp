#include "PaintedItem.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>
#include <cmath>

namespace {

constexpr int maxPictures = 2;
constexpr int restDelay = 50; // milliseconds without movement; longer than one animation step

double fraction(double x)
{
    return x - std::floor(x + PixelPlacement::tolerance);
}

/** The smallest rectangle of whole pixels that contains `area`, ignoring rounding errors. */
QRect wholePixels(const QRectF& area)
{
    const QPoint topLeft(int(std::floor(area.left() + PixelPlacement::tolerance)),
                         int(std::floor(area.top() + PixelPlacement::tolerance)));
    const QPoint end(int(std::ceil(area.right() - PixelPlacement::tolerance)),
                     int(std::ceil(area.bottom() - PixelPlacement::tolerance)));
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

bool isOpaque(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (!std::all_of(line, line + image.width(), [](QRgb pixel) { return qAlpha(pixel) == 255; }))
            return false;
    }
    return true;
}

} // namespace

PaintedItem::PaintedItem(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void PaintedItem::repaint()
{
    m_inputsChanged = true;
    update();
    Q_EMIT artChanged();
}

void PaintedItem::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        disconnect(m_frameConnection);
        if (data.window)
            m_frameConnection = connect(data.window, &QQuickWindow::afterAnimating, this, &PaintedItem::trackPlacement);
    } else if (change == ItemDevicePixelRatioHasChanged || change == ItemVisibleHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, data);
}

void PaintedItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        repaint();
}

PixelPlacement PaintedItem::placement() const
{
    const QTransform toScene = itemTransform(nullptr, nullptr);
    const double ratio = window()->effectiveDevicePixelRatio();
    const QPointF origin = toScene.map(QPointF()) * ratio;
    PixelPlacement placement;
    // Soft art is painted as if aligned to the pixel grid, and drawn aligned by nearest-neighbour sampling.
    if (!isSoft())
        placement.phase = QPointF(fraction(origin.x()), fraction(origin.y()));
    placement.scale = QSizeF(toScene.m11(), toScene.m22()) * ratio;
    const QRectF art = QRectF(QPointF(), size()).marginsAdded({bleed(), bleed(), bleed(), bleed()});
    placement.pixels =
        wholePixels(QRectF(placement.phase.x() + art.x() * placement.scale.width(),
                           placement.phase.y() + art.y() * placement.scale.height(),
                           art.width() * placement.scale.width(), art.height() * placement.scale.height()));
    return placement;
}

/** Called once per frame: detects that an ancestor moved or scaled this item, and when the movement has ended. */
void PaintedItem::trackPlacement()
{
    if (!isVisible() || size().isEmpty())
        return;
    const PixelPlacement now = placement();
    if (now == m_paintedPlacement) {
        m_restTimer.stop();
        m_atRest = true;
    } else if (!(now == m_lastPlacement)) {
        m_restTimer.start(restDelay, this);
        m_atRest = false;
        update();
    }
    m_lastPlacement = now;
}

void PaintedItem::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_restTimer.timerId())
        return QQuickItem::timerEvent(event);
    m_restTimer.stop();
    m_atRest = true;
    update();
}

SharedPictures::Picture PaintedItem::pictureFor(const PixelPlacement& placement)
{
    for (qsizetype i = 0; i < m_pictures.size(); ++i) {
        if (m_pictures.at(i).placement == placement) {
            m_pictures.move(i, 0);
            return m_pictures.constFirst().image;
        }
    }
    const auto paint = [&] { return paintImage(placement); };
    const QString key = cacheKey();
    m_pictures.prepend({placement, key.isEmpty() ? std::make_shared<const QImage>(paint())
                                                 : SharedPictures::get({key, size(), placement}, paint)});
    if (m_pictures.size() > maxPictures)
        m_pictures.removeLast();
    return m_pictures.constFirst().image;
}

QImage PaintedItem::paintImage(const PixelPlacement& placement) const
{
    const QSize pixels(hasUniformRows() ? 1 : placement.pixels.width(), placement.pixels.height());
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(placement.phase - placement.pixels.topLeft());
    painter.scale(placement.scale.width(), placement.scale.height());
    paint(painter, size());
    painter.end();
    // An opaque format makes fading three times as fast, and items behind it are not drawn.
    if (isOpaque(image))
        image.reinterpretAsFormat(QImage::Format_RGB32);
    return image;
}

QSGNode* PaintedItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    auto node = static_cast<QSGImageNode*>(old);
    if (!isVisible())
        return node;
    const PixelPlacement now = placement();
    if (now.pixels.isEmpty()) {
        delete node;
        return nullptr;
    }
    if (m_inputsChanged)
        m_pictures.clear();
    const bool hasTexture = node != nullptr;
    if (!node)
        node = window()->createImageNode();
    // A changed input is painted at once, a changed placement when the movement has ended.
    if (m_inputsChanged || !hasTexture || (m_atRest && !(now == m_paintedPlacement))) {
        const SharedPictures::Picture picture = pictureFor(now);
        node->setOwnsTexture(true);
        node->setTexture(window()->createTextureFromImage(*picture));
        node->setSourceRect(picture->rect());
        const QPointF corner = now.pixels.topLeft() - now.phase;
        node->setRect(QRectF(corner.x() / now.scale.width(), corner.y() / now.scale.height(),
                             now.pixels.width() / now.scale.width(), now.pixels.height() / now.scale.height()));
        m_paintedPlacement = now;
        m_inputsChanged = false;
    }
    // At rest one texel is one pixel, and linear filtering would only blur the image.
    node->setFiltering(now == m_paintedPlacement ? QSGTexture::Nearest : QSGTexture::Linear);
    return node;
}
