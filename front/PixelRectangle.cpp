#include "PixelRectangle.h"

#include "PixelPlacement.h"

#include <QQuickWindow>
#include <QSGRectangleNode>

namespace quillmere {

PixelRectangle::PixelRectangle(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void PixelRectangle::setColor(const QColor& color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void PixelRectangle::setKeepsSize(bool keepsSize)
{
    if (keepsSize == this->keepsSize())
        return;
    m_snapTo = keepsSize ? SnapTo::Size : SnapTo::Edges;
    update();
    Q_EMIT keepsSizeChanged();
}

void PixelRectangle::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        disconnect(m_frameConnection);
        if (data.window)
            m_frameConnection =
                connect(data.window, &QQuickWindow::afterAnimating, this, &PixelRectangle::updateIfMoved);
    }
    QQuickItem::itemChange(change, data);
}

void PixelRectangle::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        update();
}

QRectF PixelRectangle::snappedGeometry() const
{
    const double ratio = window()->effectiveDevicePixelRatio();
    const QTransform toDevice = itemTransform(nullptr, nullptr) * QTransform::fromScale(ratio, ratio);
    // Without this margin, a rounding error could exclude a row or column of pixels in the software renderer.
    const double x = PixelPlacement::tolerance / toDevice.m11();
    const double y = PixelPlacement::tolerance / toDevice.m22();
    return snappedRect(toDevice, {QPointF(), size()}, m_snapTo).marginsAdded({x, y, x, y});
}

/** Called once a frame: schedules drawing if an ancestor moved or scaled this item. */
void PixelRectangle::updateIfMoved()
{
    if (isVisible() && !size().isEmpty() && snappedGeometry() != m_drawnGeometry)
        update();
}

QSGNode* PixelRectangle::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    auto* node = static_cast<QSGRectangleNode*>(old);
    if (size().isEmpty()) {
        delete node;
        return nullptr;
    }
    if (!node)
        node = window()->createRectangleNode();
    m_drawnGeometry = snappedGeometry();
    node->setRect(m_drawnGeometry);
    node->setColor(m_color);
    return node;
}

} // namespace quillmere
