#include "FullBleed.h"

#include "Canvas.h"

FullBleed::FullBleed(QQuickItem* parent) : QQuickItem(parent)
{
    follow();
}

void FullBleed::itemChange(ItemChange change, const ItemChangeData& data)
{
    // Not when it leaves the window: an ancestor may be half destroyed then, and must not be cast to Canvas.
    if (change == ItemParentHasChanged || (change == ItemSceneChange && data.window))
        follow();
    QQuickItem::itemChange(change, data);
}

void FullBleed::follow()
{
    for (const auto& connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_canvas = nullptr;
    for (QQuickItem* item = parentItem(); item && !m_canvas; item = item->parentItem())
        m_canvas = qobject_cast<Canvas*>(item);
    if (m_canvas) {
        m_connections << connect(m_canvas, &Canvas::visibleAreaChanged, this, &FullBleed::stretch)
                      << connect(m_canvas, &QObject::destroyed, this, [this] { m_canvas = nullptr; });
    } else if (parentItem()) {
        m_connections << connect(parentItem(), &QQuickItem::widthChanged, this, &FullBleed::stretch)
                      << connect(parentItem(), &QQuickItem::heightChanged, this, &FullBleed::stretch);
    }
    stretch();
}

void FullBleed::stretch()
{
    if (!parentItem())
        return;
    const QRectF area = m_canvas ? m_canvas->visibleArea() : QRectF(QPointF(), parentItem()->size());
    setPosition(area.topLeft());
    setSize(area.size());
}
