// The viewer's place in a stack, and the focus that follows it.

#include "LazyStack.h"

#include "FocusScreen.h"
#include "FocusSection.h"
#include "ScrollArea.h"

#include <QScopedValueRollback>

namespace {

/** What is to have the focus in `item`: what held it last in its section, else the first thing that can. */
Focusable* entrance(QQuickItem* item)
{
    if (auto focusable = qobject_cast<Focusable*>(item))
        return focusable;
    if (auto section = qobject_cast<FocusSection*>(item); section && section->held())
        return section->held();
    const auto children = item->childItems();
    for (QQuickItem* child : children) {
        if (Focusable* focusable = entrance(child))
            return focusable;
    }
    return nullptr;
}

} // namespace

/** After a change, and when it is made, the stack stands where the focus would come to, unless that is in its area. */
void LazyStack::showPlaceAtOnce()
{
    ScrollArea* area = m_sight.area();
    if (m_isPlaceShown || !area || m_rows.count() == 0)
        return;
    m_isPlaceShown = true;
    const FocusScreen* screen = FocusScreen::around(this);
    if (screen && screen->focused() && area->isAncestorOf(screen->focused()))
        return;
    const bool hasPlace = m_place >= 0 && m_place < m_rows.count();
    const StackRows::Row& row = m_rows.at(hasPlace ? m_place : 0);
    area->reveal(hasPlace ? m_sight.offset() + row.first : 0, m_sight.offset() + row.last, true);
}

bool LazyStack::isBesidePlace(const QQuickItem* descendant) const
{
    const int row = m_items.rowAround(descendant);
    return row >= 0 && isNearPlace(row);
}

void LazyStack::hold(const QQuickItem* descendant)
{
    if (const FocusScreen* screen = FocusScreen::around(this))
        connect(screen, &FocusScreen::focusedChanged, this, &LazyStack::updateContainsFocus, Qt::UniqueConnection);
    const int row = m_items.rowAround(descendant);
    if (row < 0 || row == m_place || m_isMovingFocus)
        return;
    // The place follows the focus here, not the other way round.
    const QScopedValueRollback moving(m_isMovingFocus, true);
    Q_EMIT held(row);
}

/** The section around this is entered at the place, also when the item there is a new one. */
void LazyStack::rememberPlace() const
{
    FocusSection* section = FocusSection::around(this);
    if (!section)
        return;
    // What it was left at beside this stack is where it is entered again.
    const Focusable* held = section->held();
    if (held && (!isAncestorOf(held) || m_items.rowAround(held) == m_place))
        return;
    QQuickItem* item = m_items.at(m_place);
    Focusable* focusable = item ? entrance(item) : nullptr;
    if (focusable || (m_place < 0 && !screenFocusedHere()))
        section->setHeld(focusable);
}

void LazyStack::updateContainsFocus()
{
    if (m_containsFocus == bool(screenFocusedHere()))
        return;
    m_containsFocus = !m_containsFocus;
    Q_EMIT containsFocusChanged();
}

/** The screen around this if its focus is in here. */
FocusScreen* LazyStack::screenFocusedHere() const
{
    FocusScreen* screen = FocusScreen::around(this);
    return screen && screen->focused() && isAncestorOf(screen->focused()) ? screen : nullptr;
}

/** Gives the focus, which was in this stack, to the item at the place. */
void LazyStack::focusPlace(FocusScreen* screen)
{
    QQuickItem* item = m_items.at(m_place);
    if (!screen || !item || m_items.rowAround(screen->focused()) == m_place)
        return;
    if (Focusable* focusable = entrance(item))
        moveFocus(screen, focusable);
}

void LazyStack::moveFocus(FocusScreen* screen, Focusable* focusable)
{
    const QScopedValueRollback moving(m_isMovingFocus, true);
    screen->focus(focusable, true);
}
