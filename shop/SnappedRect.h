#pragma once

#include <QRectF>

class QPainter;

/** `rect` with its edges moved to those of device pixels, so that a plain shape has no blurred rim. Any thread. */
QRectF snappedRect(const QPainter& painter, const QRectF& rect);
