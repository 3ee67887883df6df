#pragma once

#include <QList>
#include <QRectF>

/**
 * Which of several rectangles of one plane comes next. Pure functions; arrows are Qt::Key_Up, Down, Left and Right,
 * answers are indices, -1 for none.
 */
namespace FocusGeometry {

enum class Beam {
    Needed, ///< only what overlaps the extent of `from` across the arrow
    Free
};

/** The nearest that lies wholly that way: the least gap wins, then the least offset of the centres across the arrow. */
qsizetype next(const QRectF& from, const QList<QRectF>& targets, int arrow, Beam beam);

/** The one with the nearest centre. */
qsizetype closest(const QRectF& to, const QList<QRectF>& targets);

/** The leading one of the topmost line. */
qsizetype topmostLeading(const QList<QRectF>& targets);

} // namespace FocusGeometry
