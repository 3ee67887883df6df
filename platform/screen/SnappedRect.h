#pragma once

#include <QRectF>

class QPainter;
class QTransform;

namespace quillmere {

/**
 * What is rounded to whole pixels: the edges, so that neighbours stay adjacent, or the size, so that equal ones stay
 * equal.
 */
enum class SnapTo { Edges, Size };

/**
 * Returns `rect`, in its own coordinates, rounded to whole device pixels, so that a plain shape has no blurred edge.
 * `toDevice` maps these coordinates to device pixels. Any thread.
 */
QRectF snappedRect(const QTransform& toDevice, const QRectF& rect, SnapTo to = SnapTo::Edges);

/** As above; the painter's transform maps to device pixels. */
QRectF snappedRect(const QPainter& painter, const QRectF& rect, SnapTo to = SnapTo::Edges);

} // namespace quillmere
