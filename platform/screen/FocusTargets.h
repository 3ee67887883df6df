#pragma once

#include <QList>
#include <QRectF>

class QQuickItem;

namespace quillmere {

class Focusable;
class FocusScreen;
class FocusSection;

/**
 * Rectangle of `item` in coordinates of its ancestor `plane`, after all running scrolls and without a focused card's
 * enlargement.
 */
QRectF restingRect(const QQuickItem& item, const QQuickItem* plane);

/**
 * The focusable items of a screen with their resting rectangles, collected by walking its item tree. Created for each
 * query, so that it is never out of date. Screen thread only; valid until the screen's items change.
 */
class FocusTargets
{
public:
    explicit FocusTargets(const FocusScreen& screen);

    /** The item that an arrow (Qt::Key) moves the focus to from `focused`; null if there is none. */
    Focusable* neighbour(const Focusable& focused, int arrow) const;

    /** The item of a section nearest to `rect`, in coordinates of the section; null if the section is empty. */
    Focusable* nearest(const FocusSection& section, const QRectF& rect) const;

    /**
     * The preferred item, else the leftmost of the items whose centre is above the bottom of the highest item; null if
     * there is none.
     */
    Focusable* first() const;

private:
    struct Target
    {
        Focusable* item; ///< null if the target is a whole section
        FocusSection* section;
        QRectF rect; ///< in coordinates of the screen
    };
    using Targets = QList<Target>;

    void collect(const QQuickItem& item, QPointF origin, FocusSection* section);
    Targets targetsIn(const FocusSection* section) const;
    Targets targetsOutside(const FocusSection* section, const Focusable& focused) const;
    Focusable* entryTarget(const FocusSection& section, const QRectF& from, int arrow) const;
    static QList<QRectF> rects(const Targets& targets);

    const FocusScreen& m_screen;
    Targets m_targets;
};

} // namespace quillmere
