#include "FocusSection.h"

#include "FocusScreen.h"

FocusSection::FocusSection(QQuickItem* parent) : QQuickItem(parent) {}

FocusSection* FocusSection::around(const QQuickItem* item)
{
    for (QQuickItem* parent = item->parentItem(); parent; parent = parent->parentItem()) {
        if (auto* const section = qobject_cast<FocusSection*>(parent))
            return section;
        if (qobject_cast<FocusScreen*>(parent))
            break;
    }
    return nullptr;
}

Focusable* FocusSection::held() const
{
    return m_held && m_held->canHoldFocus() && around(m_held) == this ? m_held.data() : nullptr;
}

void FocusSection::setHeld(Focusable* focusable)
{
    m_held = focusable;
}
