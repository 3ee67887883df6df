#include "ReadingScreen.h"

#include "FocusTargets.h"
#include "ScrollArea.h"

#include <QKeyEvent>

namespace quillmere {

namespace {

ScrollArea* enclosingScrollArea(const QQuickItem* item)
{
    for (QQuickItem* parent = item ? item->parentItem() : nullptr; parent; parent = parent->parentItem()) {
        if (auto* const area = qobject_cast<ScrollArea*>(parent))
            return area;
    }
    return nullptr;
}

} // namespace

void ReadingScreen::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_MediaTogglePlayPause:
    case Qt::Key_PageDown:
        turnPage(Qt::Key_Down);
        break;
    case Qt::Key_PageUp:
        turnPage(Qt::Key_Up);
        break;
    default:
        FocusScreen::keyPressEvent(event);
    }
}

/** Moves the focus to the next item that was not fully visible; it starts the new page, or ends it on the way up. */
void ReadingScreen::turnPage(int arrow)
{
    ScrollArea* const area = enclosingScrollArea(focused());
    if (!area)
        return;
    const qreal pageTop = area->targetPosition();
    const qreal pageHeight = area->viewExtent();
    // If the focus stays, move() has scrolled inside an item taller than a page, and the page is turned.
    for (const Focusable* before = focused(); move(arrow) && focused() != before; before = focused()) {
        const QRectF rect = restingRect(*focused(), area->contentItem());
        // An item taller than a page is already shown from its beginning.
        if (rect.height() >= pageHeight)
            return;
        if (arrow == Qt::Key_Down && rect.bottom() > pageTop + pageHeight) {
            const qreal top = rect.top() - area->revealMargin();
            return area->reveal(top, top + pageHeight);
        }
        if (arrow == Qt::Key_Up && rect.top() < pageTop) {
            const qreal bottom = rect.bottom() + area->revealMargin();
            area->reveal(bottom - pageHeight, bottom);
            return focusTopmostVisible(*area);
        }
    }
}

/** Moves the focus up to the topmost item that is fully visible. */
void ReadingScreen::focusTopmostVisible(const ScrollArea& area)
{
    const auto isVisible = [&area](const Focusable& item) {
        return restingRect(item, area.contentItem()).top() - area.revealMargin() >= area.targetPosition();
    };
    while (Focusable* const above = FocusTargets(*this).neighbour(*focused(), Qt::Key_Up)) {
        if (!isVisible(*above))
            return;
        focus(above);
    }
}

} // namespace quillmere
