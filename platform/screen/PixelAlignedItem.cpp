#include "PixelAlignedItem.h"

#include <QQuickWindow>
#include <QTimerEvent>

namespace quillmere {

// QQuickItem's constructor would enter the parent's window before itemChange() of this class can be called.
PixelAlignedItem::PixelAlignedItem(QQuickItem* parent)
{
    setFlag(ItemHasContents);
    setParent(parent);
    setParentItem(parent);
}

void PixelAlignedItem::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        disconnect(m_frameConnection);
        if (data.window)
            m_frameConnection =
                connect(data.window, &QQuickWindow::afterAnimating, this, &PixelAlignedItem::trackPlacement);
    }
    QQuickItem::itemChange(change, data);
}

void PixelAlignedItem::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_stableTimer.timerId())
        return QQuickItem::timerEvent(event);
    m_stableTimer.stop();
    onStable();
}

} // namespace quillmere
