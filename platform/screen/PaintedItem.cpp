#include "PaintedItem.h"

#include "DevicePixels.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int maxPictures = 2;

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

PaintedItem::PaintedItem(QQuickItem* parent) : PixelAlignedItem(parent) {}

void PaintedItem::setInput(QPointer<PaintedItem>& input, PaintedItem* value)
{
    if (input == value)
        return;
    if (input)
        disconnect(input, nullptr, this, nullptr);
    input = value;
    if (value)
        connect(value, &PaintedItem::artChanged, this, &PaintedItem::repaint);
    repaint();
}

void PaintedItem::repaint()
{
    m_inputsChanged = true;
    update();
    Q_EMIT artChanged();
}

void PaintedItem::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemDevicePixelRatioHasChanged || change == ItemVisibleHasChanged)
        update();
    PixelAlignedItem::itemChange(change, data);
}

void PaintedItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    PixelAlignedItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        repaint();
}

PixelPlacement PaintedItem::placement() const
{
    DevicePixels device(*this);
    // Soft art is painted as if aligned to the pixel grid, and drawn aligned by nearest-neighbour sampling.
    if (isSoft())
        device.origin = {};
    return PixelPlacement::covering(device,
                                    QRectF(QPointF(), size()).marginsAdded({bleed(), bleed(), bleed(), bleed()}));
}

void PaintedItem::trackPlacement()
{
    if (!isVisible() || size().isEmpty())
        return;
    const PixelPlacement now = placement();
    if (now == m_paintedPlacement) {
        stopStableTimer();
    } else if (now != m_lastPlacement) {
        restartStableTimer();
        update();
    }
    m_lastPlacement = now;
}

SharedPictures::Picture PaintedItem::pictureFor(const PixelPlacement& placement)
{
    for (qsizetype i = 0; i < m_pictures.size(); ++i) {
        if (m_pictures.at(i).placement == placement) {
            m_pictures.move(i, 0);
            return m_pictures.constFirst().picture;
        }
    }
    const auto paint = [&] { return paintImage(placement); };
    const QString key = cacheKey();
    m_pictures.prepend({placement, key.isEmpty() ? std::make_shared<const QImage>(paint())
                                                 : SharedPictures::get({key, size(), placement}, paint)});
    if (m_pictures.size() > maxPictures)
        m_pictures.removeLast();
    return m_pictures.constFirst().picture;
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
    if (m_inputsChanged || !hasTexture || (isStable() && now != m_paintedPlacement)) {
        const SharedPictures::Picture picture = pictureFor(now);
        node->setOwnsTexture(true);
        node->setTexture(window()->createTextureFromImage(*picture));
        node->setSourceRect(picture->rect());
        node->setRect(now.area());
        m_paintedPlacement = now;
        m_inputsChanged = false;
    }
    // At rest one texel is one pixel, and linear filtering would only blur the image.
    node->setFiltering(now == m_paintedPlacement ? QSGTexture::Nearest : QSGTexture::Linear);
    return node;
}

} // namespace quillmere
