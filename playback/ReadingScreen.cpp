#include "ReadingScreen.h"

#include "FocusTargets.h"
#include "ScrollArea.h"

#include <QKeyEvent>

namespace {

ScrollArea* areaAround(const QQuickItem* item)
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

/** Goes on until something was not wholly in sight: that begins the new page, or ends it on the way up. */
void ReadingScreen::turnPage(int arrow)
{
    ScrollArea* const area = areaAround(focused());
    if (!area)
        return;
    const qreal begin = area->aim();
    const qreal length = area->viewExtent();
    // A move that reads on in what is longer than a page has turned one.
    for (const Focusable* before = focused(); move(arrow) && focused() != before; before = focused()) {
        const QRectF rect = rectOfRest(*focused(), area->contentItem());
        // What is longer than a page stands at its beginning already.
        if (rect.height() >= length)
            return;
        if (arrow == Qt::Key_Down && rect.bottom() > begin + length) {
            const qreal top = rect.top() - area->lead();
            return area->reveal(top, top + length);
        }
        if (arrow == Qt::Key_Up && rect.top() < begin) {
            const qreal bottom = rect.bottom() + area->lead();
            area->reveal(bottom - length, bottom);
            return focusTopmost(*area);
        }
    }
}

/** Of what is wholly in sight, from the focused thing upwards. */
void ReadingScreen::focusTopmost(const ScrollArea& area)
{
    const auto isInSight = [&area](const Focusable& thing) {
        return rectOfRest(thing, area.contentItem()).top() - area.lead() >= area.aim();
    };
    while (Focusable* const above = FocusTargets(*this).neighbour(*focused(), Qt::Key_Up)) {
        if (!isInSight(*above))
            return;
        focus(above);
    }
}
