#pragma once

#include <QRectF>

class QPainter;

/** `rect` with each edge moved to the nearest edge of a device pixel, so that a plain shape has no blurred rim. Any thread. */
QRectF snappedRect(const QPainter& painter, const QRectF& rect);
