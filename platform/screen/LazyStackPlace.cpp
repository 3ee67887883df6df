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

/** A row that was made anew stands from the beginning where it was left. */
void LazyStack::showPlaceAtOnce()
{
    if (m_isPlaceShown || !m_sight.area() || m_rows.count() == 0)
        return;
    m_isPlaceShown = true;
    if (m_orientation != Qt::Horizontal || m_place < 0 || m_place >= m_rows.count())
        return;
    const StackRows::Row& row = m_rows.at(m_place);
    m_sight.area()->reveal(m_sight.offset() + row.first, m_sight.offset() + row.last, true);
}

bool LazyStack::isBesidePlace(const QQuickItem* descendant) const
{
    const int row = m_items.rowAround(descendant);
    return row >= 0 && isNearPlace(row);
}

void LazyStack::hold(const QQuickItem* descendant)
{
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
    QQuickItem* item = m_items.at(m_place);
    FocusSection* section = item ? FocusSection::around(this) : nullptr;
    if (!section)
        return;
    // What it was left at beside this stack is where it is entered again.
    const Focusable* held = section->held();
    if (held && (!isAncestorOf(held) || m_items.rowAround(held) == m_place))
        return;
    if (Focusable* focusable = entrance(item))
        section->setHeld(focusable);
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
