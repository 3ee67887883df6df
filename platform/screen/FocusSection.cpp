#include "FocusSection.h"

#include "FocusScreen.h"
#include "LazyStack.h"

namespace quillmere {

FocusSection::FocusSection(QQuickItem* parent) : QQuickItem(parent) {}

FocusSection* FocusSection::enclosingSection(const QQuickItem* item)
{
    for (QQuickItem* parent = item->parentItem(); parent; parent = parent->parentItem()) {
        if (auto* const section = qobject_cast<FocusSection*>(parent))
            return section;
        if (qobject_cast<FocusScreen*>(parent))
            break;
    }
    return nullptr;
}

Focusable* FocusSection::current() const
{
    if (m_focused && m_focused->isFocusable() && enclosingSection(m_focused) == this)
        return m_focused;
    Focusable* const inStack = m_stack && isAncestorOf(m_stack) ? m_stack->currentFocusable() : nullptr;
    return inStack && inStack->isFocusable() ? inStack : nullptr;
}

void FocusSection::addStack(LazyStack& stack)
{
    if (!m_stack)
        m_stack = &stack;
}

void FocusSection::onFocusInside(Focusable& focused, bool)
{
    m_focused = &focused;
    for (QQuickItem* parent = focused.parentItem(); parent != this; parent = parent->parentItem()) {
        if (auto* const stack = qobject_cast<LazyStack*>(parent)) {
            m_stack = stack;
            m_focused = nullptr;
        }
    }
}

} // namespace quillmere
