#pragma once

#include "Focusable.h"

#include <QPointer>
#include <QRectF>

namespace quillmere {

class FocusSection;

/**
 * A screen that is navigated with the remote; base of all screens. An arrow key moves the focus to the nearest
 * Focusable in its direction. The focus does not wrap: without a target it stays. While the screen is in front and has
 * a focusable item, exactly one item is focused; otherwise the screen itself receives the keys, so that Back works. A
 * screen inside it (a page, a cover) has a focus of its own. Screen thread only; owned by its parent item.
 *
 * All geometry is the resting geometry: positions after all running scrolls, without the enlargement of a focused card.
 */
class FocusScreen : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** The focused item, also while the screen is not in front; null if there is none. */
    Q_PROPERTY(quillmere::Focusable* focused READ focused NOTIFY focusedChanged FINAL)

public:
    explicit FocusScreen(QQuickItem* parent = nullptr);
    ~FocusScreen() override;

    /** The innermost screen that contains `item`; null if there is none. */
    static FocusScreen* enclosingScreen(const QQuickItem* item);

    Focusable* focused() const { return m_focused; }

    /**
     * Gives active focus to this screen, or to the screen that covers it. The item focused last is focused again, else
     * the preferred one, else the first of the topmost line.
     */
    virtual void acquireFocus();

    /** The screen that covers this one, null if uncovered; set by the FullScreenCover that presents it. */
    FocusScreen* coveringScreen() const { return m_cover; }
    void setCover(FocusScreen* cover) { m_cover = cover; }

    /** Focuses an item and scrolls it into view; with `immediately` the scroll is not animated. */
    void focus(Focusable* focusable, bool immediately = false);

    /**
     * Moves the focus one step, or scrolls a long item. `arrow` is Qt::Key_Up, Down, Left or Right. Returns whether
     * anything moved.
     */
    bool move(int arrow);

    /** If this screen is in front, focuses an item unless one is focused already. */
    void ensureFocus();

    /** Calls ensureFocus() from the event loop; items call this when they appear or disappear. */
    void ensureFocusLater();

Q_SIGNALS:
    void focusedChanged();

    /** The screen was presented, pushed, or uncovered by a pop. Not emitted when a cover above it is dismissed. */
    void appeared();
    /** The screen was popped or dismissed. Emitted before its animation ends, so that its tasks end early. */
    void disappeared();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    bool isInnerScreenActive() const;
    bool isFocusedValid() const;
    void applyFocus();
    Focusable* fallback() const;
    void releaseFocus();
    void resetFocused();
    void storeRect();
    bool scrollFocused(int arrow);

    QPointer<Focusable> m_focused;
    bool m_isFocusNotified = false; ///< the latest focusedChanged reported an item
    QPointer<FocusScreen> m_cover;

    QPointer<FocusSection> m_lastSection;
    QRectF m_lastRect; ///< of the item focused last, in its section or this screen; null if none was

    QMetaObject::Connection m_windowConnection; ///< window changes of the focused item
    bool m_isEnsureQueued = false;
};

} // namespace quillmere
