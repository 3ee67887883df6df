#pragma once

#include "FocusContainer.h"
#include "Focusable.h"

#include <QPointer>

namespace quillmere {

class LazyStack;

/**
 * A group of Focusable items. Seen from outside, the area of the section is one target for an arrow. Focus enters it at
 * the item that was focused in it last; in a LazyStack, at its current row; else at the nearest item. A scroll area
 * reveals the whole section if it fits. Sections do not nest. Screen thread only; owned by its parent item.
 */
class FocusSection : public QQuickItem, public FocusContainer
{
    Q_OBJECT
    QML_ELEMENT
    /** Whether the first entry focuses the leftmost item at the top instead of the nearest item. */
    Q_PROPERTY(bool entersAtFirst MEMBER m_entersAtFirst FINAL)

public:
    explicit FocusSection(QQuickItem* parent = nullptr);

    /** The section that contains `item` within the same screen; null if there is none. */
    static FocusSection* enclosingSection(const QQuickItem* item);

    /** Where the focus enters: the item focused last, or the current row of m_stack; null if there is neither. */
    Focusable* current() const;

    /** A stack in this section calls this, so that the focus can enter at its current row. */
    void addStack(LazyStack& stack);

    void onFocusInside(Focusable& focused, bool immediately) override;
    bool entersAtFirst() const { return m_entersAtFirst; }

private:
    bool m_entersAtFirst = false;
    QPointer<LazyStack> m_stack;   ///< the stack focused last, at first the one added first
    QPointer<Focusable> m_focused; ///< the item focused last; null if it is in m_stack
};

} // namespace quillmere
