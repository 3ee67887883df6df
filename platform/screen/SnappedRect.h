#pragma once

#include <QRectF>

class QPainter;

/** What of a snapped rectangle meets its neighbours: its edges, or its size, for equal ones to stay equal. */
enum class SnapTo { Edges, Size };

/** `rect` moved to the edges of device pixels, so that a plain shape has no blurred rim. Any thread. */
QRectF snappedRect(const QPainter& painter, const QRectF& rect, SnapTo to = SnapTo::Edges);
