#include "FullBleed.h"

#include "Canvas.h"

namespace quillmere {

FullBleed::FullBleed(QQuickItem* parent) : QQuickItem(parent)
{
    findCanvas();
}

void FullBleed::itemChange(ItemChange change, const ItemChangeData& data)
{
    // When an ancestor is destroyed, this item leaves the window; the ancestor is not a canvas any more then.
    if (change == ItemParentHasChanged || (change == ItemSceneChange && data.window))
        findCanvas();
    QQuickItem::itemChange(change, data);
}

void FullBleed::findCanvas()
{
    for (const auto& connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_canvas = nullptr;
    for (QQuickItem* item = parentItem(); item && !m_canvas; item = item->parentItem())
        m_canvas = qobject_cast<Canvas*>(item);
    if (m_canvas) {
        m_connections << connect(m_canvas, &Canvas::visibleAreaChanged, this, &FullBleed::updateGeometry)
                      << connect(m_canvas, &QObject::destroyed, this, [this] { m_canvas = nullptr; });
    } else if (parentItem()) {
        m_connections << connect(parentItem(), &QQuickItem::widthChanged, this, &FullBleed::updateGeometry)
                      << connect(parentItem(), &QQuickItem::heightChanged, this, &FullBleed::updateGeometry);
    }
    updateGeometry();
}

void FullBleed::updateGeometry()
{
    if (!parentItem())
        return;
    const QRectF area = m_canvas ? m_canvas->visibleArea() : QRectF(QPointF(), parentItem()->size());
    setPosition(area.topLeft());
    setSize(area.size());
}

} // namespace quillmere
