#include "FocusTargets.h"

#include "FocusGeometry.h"
#include "FocusScreen.h"
#include "FocusSection.h"
#include "ScrollArea.h"

#include <algorithm>
#include <iterator>

namespace quillmere {

using FocusGeometry::Beam;

namespace {

QPointF restingPosition(const QQuickItem& item)
{
    const auto* const area = qobject_cast<ScrollArea*>(item.parentItem());
    if (!area || area->contentItem() != &item)
        return item.position();
    return area->orientation() == Qt::Vertical ? QPointF(item.x(), -area->targetPosition())
                                               : QPointF(-area->targetPosition(), item.y());
}

} // namespace

QRectF restingRect(const QQuickItem& item, const QQuickItem* plane)
{
    QRectF rect(QPointF(), item.size());
    for (const QQuickItem* moved = &item; moved && moved != plane; moved = moved->parentItem())
        rect.translate(restingPosition(*moved));
    return rect;
}

FocusTargets::FocusTargets(const FocusScreen& screen) : m_screen(screen)
{
    collect(screen, {}, nullptr);
}

void FocusTargets::collect(const QQuickItem& item, QPointF origin, FocusSection* section)
{
    const auto children = item.childItems();
    for (QQuickItem* const child : children) {
        if (!child->isVisible() || qobject_cast<FocusScreen*>(child))
            continue;
        const QPointF position = origin + restingPosition(*child);
        if (auto* const focusable = qobject_cast<Focusable*>(child)) {
            if (focusable->isFocusable())
                m_targets.append({focusable, section, QRectF(position, focusable->size())});
            continue;
        }
        auto* const inner = qobject_cast<FocusSection*>(child);
        collect(*child, position, inner ? inner : section);
    }
}

Focusable* FocusTargets::neighbour(const Focusable& focused, int arrow) const
{
    const QRectF from = restingRect(focused, &m_screen);
    const FocusSection* const section = FocusSection::enclosingSection(&focused);
    if (section) {
        const Targets near = targetsIn(section);
        auto i = FocusGeometry::next(from, rects(near), arrow, Beam::Needed);
        // The last line of a grid may be shorter than the others.
        if (i < 0 && (arrow == Qt::Key_Up || arrow == Qt::Key_Down))
            i = FocusGeometry::next(from, rects(near), arrow, Beam::Free);
        if (i >= 0)
            return near[i].item;
    }
    const Targets far = targetsOutside(section, focused);
    const auto i = FocusGeometry::next(from, rects(far), arrow, Beam::Needed);
    if (i < 0)
        return nullptr;
    return far[i].item ? far[i].item : entryTarget(*far[i].section, from, arrow);
}

Focusable* FocusTargets::nearest(const FocusSection& section, const QRectF& rect) const
{
    const Targets targets = targetsIn(&section);
    const QPointF origin = restingRect(section, &m_screen).topLeft();
    const auto i = FocusGeometry::closest(rect.translated(origin), rects(targets));
    return i < 0 ? nullptr : targets[i].item;
}

Focusable* FocusTargets::first() const
{
    for (const Target& target : m_targets) {
        if (target.item->isPreferred())
            return target.item;
    }
    const auto i = FocusGeometry::topmostLeading(rects(m_targets));
    return i < 0 ? nullptr : m_targets[i].item;
}

FocusTargets::Targets FocusTargets::targetsIn(const FocusSection* section) const
{
    Targets targets;
    std::copy_if(m_targets.begin(), m_targets.end(), std::back_inserter(targets),
                 [section](const Target& target) { return target.section == section; });
    return targets;
}

/**
 * Items outside any section, except `focused`, and the other sections as one target each (once for each of their
 * items).
 */
FocusTargets::Targets FocusTargets::targetsOutside(const FocusSection* section, const Focusable& focused) const
{
    Targets targets;
    for (const Target& target : m_targets) {
        if (target.section && target.section != section)
            targets.append({nullptr, target.section, restingRect(*target.section, &m_screen)});
        else if (!target.section && target.item != &focused)
            targets.append(target);
    }
    return targets;
}

Focusable* FocusTargets::entryTarget(const FocusSection& section, const QRectF& from, int arrow) const
{
    if (Focusable* const current = section.current())
        return current;
    const Targets targets = targetsIn(&section);
    if (section.entersAtFirst())
        return targets[FocusGeometry::topmostLeading(rects(targets))].item;
    const auto i = FocusGeometry::next(from, rects(targets), arrow, Beam::Free);
    return targets[i < 0 ? FocusGeometry::closest(from, rects(targets)) : i].item;
}

QList<QRectF> FocusTargets::rects(const Targets& targets)
{
    QList<QRectF> rects;
    for (const Target& target : targets)
        rects.append(target.rect);
    return rects;
}

} // namespace quillmere
