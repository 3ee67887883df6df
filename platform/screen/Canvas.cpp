#include "Canvas.h"

#include <QQuickWindow>

#include <cmath>

namespace quillmere {

Canvas::Canvas(QQuickItem* parent) : QQuickItem(parent)
{
    setSize(points);
    setTransformOrigin(TopLeft);
    connectTo(parent);
}

void Canvas::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemParentHasChanged)
        connectTo(data.item);
    else if (change == ItemDevicePixelRatioHasChanged)
        fit();
    QQuickItem::itemChange(change, data);
}

void Canvas::connectTo(QQuickItem* parent)
{
    for (const auto& connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    if (!parent)
        return;
    m_connections << connect(parent, &QQuickItem::widthChanged, this, &Canvas::fit)
                  << connect(parent, &QQuickItem::heightChanged, this, &Canvas::fit);
    fit();
}

void Canvas::fit()
{
    const QSizeF space = parentItem() ? parentItem()->size() : QSizeF();
    if (space.isEmpty())
        return;
    const double factor = std::min(space.width() / points.width(), space.height() / points.height());
    // Aligned to whole device pixels, so that art painted for the canvas is aligned too.
    const double ratio = window() ? window()->effectiveDevicePixelRatio() : 1.0;
    const auto whole = [ratio](double length) { return std::floor(length * ratio) / ratio; };
    setScale(factor);
    setPosition(
        {whole((space.width() - points.width() * factor) / 2), whole((space.height() - points.height() * factor) / 2)});

    const QRectF visible(-position() / factor, space / factor);
    if (visible == m_visibleArea)
        return;
    m_visibleArea = visible;
    Q_EMIT visibleAreaChanged();
}

} // namespace quillmere
