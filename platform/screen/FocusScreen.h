#pragma once

#include "Focusable.h"

#include <QPointer>
#include <QRectF>

class FocusSection;
class ScrollArea;

/**
 * A screen that is walked with the remote: the one mechanism behind every screen's focus. Arrow keys go to the nearest
 * Focusable that way; nothing wraps, and where nothing is that way nothing happens. Whenever the screen is in front and
 * has something to focus, exactly one thing is focused; otherwise the screen itself takes the keys, so that back works.
 * A screen within it (a page, a cover) keeps its own focus. Screen thread only; its parent item owns it.
 *
 * All geometry is that of rest: where things will stand once every scroll has ended, without the lift of a focused card.
 */
class FocusScreen : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** What holds the focus, or will again when the screen is in front; null while there is nothing. */
    Q_PROPERTY(Focusable* focused READ focused NOTIFY focusedChanged FINAL)

public:
    explicit FocusScreen(QQuickItem* parent = nullptr);
    ~FocusScreen() override;

    /** The innermost screen around `item`. */
    static FocusScreen* around(const QQuickItem* item);

    Focusable* focused() const { return m_focused; }

    /**
     * Gives the keys to this screen: what last held the focus has it again, else what is preferred, else what stands
     * topmost and then leading. A screen that covers this one gets them instead.
     */
    virtual void takeFocus();

    /** The screen that covers this one, null when it is uncovered; set by whoever presents it. */
    FocusScreen* cover() const { return m_cover; }
    void setCover(FocusScreen* cover) { m_cover = cover; }

    /** Gives the focus to one thing, and sees to it that it comes into sight (`atOnce`: without a scroll to be seen). */
    void focus(Focusable* focusable, bool atOnce = false);

    /** Goes one step; `arrow` is Qt::Key_Up, Down, Left or Right. Answers whether anything moved. */
    bool move(int arrow);

    /** Sees to it that something holds the focus, if this screen is in front. */
    void keepFocus();

    /** The same once the current changes of the screen are through; things on it call this when they come or go. */
    void keepFocusSoon();

Q_SIGNALS:
    void focusedChanged();

    /** The screen was presented, pushed, or is shown again by a pop; a screen that only was covered does not appear. */
    void appeared();
    /** The screen was popped or dismissed: its tasks end now, before it has faded away. */
    void disappeared();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    bool isYielding() const;
    bool canKeep() const;
    void settle();
    Focusable* successor() const;
    void letGo();
    void forget();
    void remember();
    void reveal(ScrollArea& area, bool atOnce) const;
    void follow(ScrollArea& area);
    bool readOn(int arrow);

    QPointer<Focusable> m_focused;
    bool m_toldOfFocus = false; ///< by the latest focusedChanged
    QPointer<FocusScreen> m_cover;

    // Where the focused thing stood, for when it has vanished.
    QPointer<FocusSection> m_section;
    QRectF m_place; ///< in its section; null before anything held the focus

    QMetaObject::Connection m_leaving;        ///< the focused thing leaves the window
    QList<QMetaObject::Connection> m_lengths; ///< the content around the focused thing grows or shrinks
    bool m_isReading = false;                 ///< the viewer scrolls through the focused thing
    bool m_keepingSoon = false;
};
