#pragma once

#include <QRectF>

class QPainter;
class QTransform;

/** What of a snapped rectangle meets its neighbours: its edges, or its size, for equal ones to stay equal. */
enum class SnapTo { Edges, Size };

/** `rect` moved to the edges of device pixels, so that a plain shape has no blurred rim. Any thread. */
QRectF snappedRect(const QTransform& toDevice, const QRectF& rect, SnapTo to = SnapTo::Edges);

/** The same for a painter, whose transform leads to device pixels. */
QRectF snappedRect(const QPainter& painter, const QRectF& rect, SnapTo to = SnapTo::Edges);
