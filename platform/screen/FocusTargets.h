#pragma once

#include <QList>
#include <QRectF>

class Focusable;
class FocusScreen;
class FocusSection;
class QQuickItem;

/** Where `item` will stand on its ancestor `plane` once every scroll has ended; no lift of a card counts. */
QRectF rectOfRest(const QQuickItem& item, const QQuickItem* plane);

/**
 * What can hold the focus on a screen at this moment, found by walking its items, and where it stands. Made anew for each
 * question, so that nothing has to be kept up to date. Screen thread only; valid until the screen's items change.
 */
class FocusTargets
{
public:
    explicit FocusTargets(const FocusScreen& screen);

    /** What an arrow (Qt::Key) leads to from the thing that has the focus; null when there is nothing that way. */
    Focusable* neighbour(const Focusable& focused, int arrow) const;

    /** The thing in a section that is nearest to a place in it; null when the section has nothing. */
    Focusable* nearest(const FocusSection& section, const QRectF& place) const;

    /** What is preferred, else what stands topmost and then leading; null when there is nothing. */
    Focusable* first() const;

private:
    struct Target
    {
        Focusable* thing; ///< null when the target is the whole section
        FocusSection* section;
        QRectF rect; ///< on the screen
    };
    using Targets = QList<Target>;

    void gather(const QQuickItem& item, QPointF origin, FocusSection* section);
    Targets within(const FocusSection* section) const;
    Targets outside(const FocusSection* section, const Focusable& focused) const;
    Focusable* entrance(const FocusSection& section, const QRectF& from, int arrow) const;
    static QList<QRectF> rects(const Targets& targets);

    const FocusScreen& m_screen;
    Targets m_things;
};
