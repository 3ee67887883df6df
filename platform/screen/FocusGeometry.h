#pragma once

#include <QList>
#include <QRectF>

/**
 * Finds the next focus target among rectangles of one coordinate system. Pure functions. `arrow` is Qt::Key_Up, Down,
 * Left or Right. Each function returns an index into `targets`, -1 for none.
 */
namespace quillmere::FocusGeometry {

enum class Beam {
    Needed, ///< a target must overlap `from` on the axis perpendicular to the arrow
    Free    ///< no such condition
};

/**
 * The nearest target that lies entirely in the arrow's direction: the one with the smallest gap, then with the smallest
 * distance of the centres perpendicular to the arrow.
 */
qsizetype next(const QRectF& from, const QList<QRectF>& targets, int arrow, Beam beam);

/** The target with the nearest centre. */
qsizetype closest(const QRectF& to, const QList<QRectF>& targets);

/** The leftmost target of the topmost line. */
qsizetype topmostLeading(const QList<QRectF>& targets);

} // namespace quillmere::FocusGeometry
