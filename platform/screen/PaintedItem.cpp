#include "PaintedItem.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>
#include <cmath>

namespace {

constexpr int picturesKept = 2;
constexpr int settlingTime = 50; // milliseconds, more than lies between the steps of a movement

double fraction(double x)
{
    return x - std::floor(x + PixelPlacement::tolerance);
}

/** The smallest rectangle of whole pixels around `area`, rounding errors left aside. */
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
        disconnect(m_frames);
        if (data.window)
            m_frames = connect(data.window, &QQuickWindow::afterAnimating, this, &PaintedItem::follow);
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
    // Soft art is painted as if it stood on the grid, and shown on whole pixels by not being filtered.
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

/** Once a frame: notices that an ancestor moved or scaled this item, and when that has ended. */
void PaintedItem::follow()
{
    if (!isVisible() || size().isEmpty())
        return;
    const PixelPlacement now = placement();
    if (now == m_shown) {
        m_settling.stop();
        m_atRest = true;
    } else if (!(now == m_seen)) {
        m_settling.start(settlingTime, this);
        m_atRest = false;
        update();
    }
    m_seen = now;
}

void PaintedItem::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_settling.timerId())
        return QQuickItem::timerEvent(event);
    m_settling.stop();
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
    const auto paint = [&] { return painted(placement); };
    const QString words = look();
    m_pictures.prepend({placement, words.isEmpty() ? std::make_shared<const QImage>(paint())
                                                   : SharedPictures::get({words, size(), placement}, paint)});
    if (m_pictures.size() > picturesKept)
        m_pictures.removeLast();
    return m_pictures.constFirst().image;
}

QImage PaintedItem::painted(const PixelPlacement& placement) const
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
    // Without an alpha channel it is faded at a third of the cost, and what it hides is not drawn.
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
    // A new input is painted at once, the rest when the movement has ended.
    if (m_inputsChanged || !hasTexture || (m_atRest && !(now == m_shown))) {
        const SharedPictures::Picture picture = pictureFor(now);
        node->setOwnsTexture(true);
        node->setTexture(window()->createTextureFromImage(*picture));
        node->setSourceRect(picture->rect());
        const QPointF corner = now.pixels.topLeft() - now.phase;
        node->setRect(QRectF(corner.x() / now.scale.width(), corner.y() / now.scale.height(),
                             now.pixels.width() / now.scale.width(), now.pixels.height() / now.scale.height()));
        m_shown = now;
        m_inputsChanged = false;
    }
    // At rest one texel is one pixel, and a filter would only blur it.
    node->setFiltering(now == m_shown ? QSGTexture::Nearest : QSGTexture::Linear);
    return node;
}
