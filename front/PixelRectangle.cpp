#include "PixelRectangle.h"

#include "PixelPlacement.h"

#include <QQuickWindow>
#include <QSGRectangleNode>

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
        disconnect(m_frames);
        if (data.window)
            m_frames = connect(data.window, &QQuickWindow::afterAnimating, this, &PixelRectangle::updateIfMoved);
    }
    QQuickItem::itemChange(change, data);
}

void PixelRectangle::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        update();
}

QRectF PixelRectangle::snapped() const
{
    const double ratio = window()->effectiveDevicePixelRatio();
    const QTransform toDevice = itemTransform(nullptr, nullptr) * QTransform::fromScale(ratio, ratio);
    // Of a pixel that a rounding error leaves out of it, the software adaptation would draw nothing.
    const double x = PixelPlacement::tolerance / toDevice.m11();
    const double y = PixelPlacement::tolerance / toDevice.m22();
    return snappedRect(toDevice, {QPointF(), size()}, m_snapTo).marginsAdded({x, y, x, y});
}

/** Once a frame: notices that an ancestor moved or scaled this item. */
void PixelRectangle::updateIfMoved()
{
    if (isVisible() && !size().isEmpty() && snapped() != m_drawn)
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
    m_drawn = snapped();
    node->setRect(m_drawn);
    node->setColor(m_color);
    return node;
}
