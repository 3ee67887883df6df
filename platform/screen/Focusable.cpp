#include "Focusable.h"

#include "FocusScreen.h"

#include <QKeyEvent>

namespace quillmere {

Focusable::Focusable(QQuickItem* parent) : QQuickItem(parent) {}

void Focusable::keyPressEvent(QKeyEvent* event)
{
    const bool select = event->key() == Qt::Key_Select && isFocusable();
    event->setAccepted(select);
    if (select && !event->isAutoRepeat())
        Q_EMIT selected();
}

void Focusable::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemActiveFocusHasChanged && data.boolValue) {
        if (FocusScreen* const screen = FocusScreen::enclosingScreen(this); screen && screen->focused() != this)
            screen->focus(this);
    } else if (change == ItemVisibleHasChanged || change == ItemEnabledHasChanged ||
               (change == ItemSceneChange && data.window)) {
        // Not when it leaves the window: its screen may be half destroyed then. The screen observes the focused item.
        notifyScreen();
    }
}

void Focusable::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.isEmpty() != oldGeometry.isEmpty())
        notifyScreen();
}

void Focusable::notifyScreen()
{
    if (FocusScreen* const screen = FocusScreen::enclosingScreen(this))
        screen->ensureFocusLater();
}

} // namespace quillmere
