#pragma once

#include "Focusable.h"

#include <QPointer>

/**
 * Focusable things that belong together: the whole area of a section is a target for a direction, and it is entered at
 * the thing that last held the focus in it, else at the nearest. A scroll area brings the whole section into sight
 * where it fits. Sections do not nest. Screen thread only; its parent item owns it.
 */
class FocusSection : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** Whether it is first entered, not at the nearest, but at what stands topmost and then leading. */
    Q_PROPERTY(bool beginsAtFirst MEMBER m_beginsAtFirst FINAL)

public:
    explicit FocusSection(QQuickItem* parent = nullptr);

    /** The innermost section around `item`, nothing when there is none. */
    static FocusSection* around(const QQuickItem* item);

    /** What last held the focus here and still can; nothing when there is no such thing. */
    Focusable* held() const;
    void setHeld(Focusable* focusable);
    bool beginsAtFirst() const { return m_beginsAtFirst; }

private:
    bool m_beginsAtFirst = false;
    QPointer<Focusable> m_held;
};
