#include "FocusTargets.h"

#include "FocusGeometry.h"
#include "FocusScreen.h"
#include "FocusSection.h"
#include "ScrollArea.h"

#include <algorithm>
#include <iterator>

using FocusGeometry::Beam;

namespace {

QPointF positionOfRest(const QQuickItem& item)
{
    const auto* const area = qobject_cast<ScrollArea*>(item.parentItem());
    if (!area || area->contentItem() != &item)
        return item.position();
    return area->orientation() == Qt::Vertical ? QPointF(item.x(), -area->aim()) : QPointF(-area->aim(), item.y());
}

} // namespace

QRectF rectOfRest(const QQuickItem& item, const QQuickItem* plane)
{
    QRectF rect(QPointF(), item.size());
    for (const QQuickItem* moved = &item; moved && moved != plane; moved = moved->parentItem())
        rect.translate(positionOfRest(*moved));
    return rect;
}

FocusTargets::FocusTargets(const FocusScreen& screen) : m_screen(screen)
{
    gather(screen, {}, nullptr);
}

void FocusTargets::gather(const QQuickItem& item, QPointF origin, FocusSection* section)
{
    const auto children = item.childItems();
    for (QQuickItem* const child : children) {
        if (!child->isVisible() || qobject_cast<FocusScreen*>(child))
            continue;
        const QPointF position = origin + positionOfRest(*child);
        if (auto* const thing = qobject_cast<Focusable*>(child)) {
            if (thing->canHoldFocus())
                m_things.append({thing, section, QRectF(position, thing->size())});
            continue;
        }
        auto* const inner = qobject_cast<FocusSection*>(child);
        gather(*child, position, inner ? inner : section);
    }
}

Focusable* FocusTargets::neighbour(const Focusable& focused, int arrow) const
{
    const QRectF from = rectOfRest(focused, &m_screen);
    const FocusSection* const section = FocusSection::around(&focused);
    if (section) {
        const Targets near = within(section);
        auto i = FocusGeometry::next(from, rects(near), arrow, Beam::Needed);
        // The last line of a grid may be a short one.
        if (i < 0 && (arrow == Qt::Key_Up || arrow == Qt::Key_Down))
            i = FocusGeometry::next(from, rects(near), arrow, Beam::Free);
        if (i >= 0)
            return near[i].thing;
    }
    const Targets far = outside(section, focused);
    const auto i = FocusGeometry::next(from, rects(far), arrow, Beam::Needed);
    if (i < 0)
        return nullptr;
    return far[i].thing ? far[i].thing : entrance(*far[i].section, from, arrow);
}

Focusable* FocusTargets::nearest(const FocusSection& section, const QRectF& place) const
{
    const Targets targets = within(&section);
    const QPointF origin = rectOfRest(section, &m_screen).topLeft();
    const auto i = FocusGeometry::closest(place.translated(origin), rects(targets));
    return i < 0 ? nullptr : targets[i].thing;
}

Focusable* FocusTargets::first() const
{
    for (const Target& target : m_things) {
        if (target.thing->isPreferred())
            return target.thing;
    }
    const auto i = FocusGeometry::topmostLeading(rects(m_things));
    return i < 0 ? nullptr : m_things[i].thing;
}

FocusTargets::Targets FocusTargets::within(const FocusSection* section) const
{
    Targets targets;
    std::copy_if(m_things.begin(), m_things.end(), std::back_inserter(targets),
                 [section](const Target& target) { return target.section == section; });
    return targets;
}

/** What stands in no section, and the other sections as a whole, once for each of their things. */
FocusTargets::Targets FocusTargets::outside(const FocusSection* section, const Focusable& focused) const
{
    Targets targets;
    for (const Target& target : m_things) {
        if (target.section && target.section != section)
            targets.append({nullptr, target.section, rectOfRest(*target.section, &m_screen)});
        else if (!target.section && target.thing != &focused)
            targets.append(target);
    }
    return targets;
}

Focusable* FocusTargets::entrance(const FocusSection& section, const QRectF& from, int arrow) const
{
    if (Focusable* const held = section.held())
        return held;
    const Targets targets = within(&section);
    if (section.beginsAtFirst())
        return targets[FocusGeometry::topmostLeading(rects(targets))].thing;
    const auto i = FocusGeometry::next(from, rects(targets), arrow, Beam::Free);
    return targets[i < 0 ? FocusGeometry::closest(from, rects(targets)) : i].thing;
}

QList<QRectF> FocusTargets::rects(const Targets& targets)
{
    QList<QRectF> rects;
    for (const Target& target : targets)
        rects.append(target.rect);
    return rects;
}
