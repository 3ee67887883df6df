#include "SnappedRect.h"

#include <QPainter>

#include <cmath>

QRectF snappedRect(const QPainter& painter, const QRectF& rect)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRectF pixels = toDevice.mapRect(rect);
    const QPointF topLeft(std::round(pixels.left()), std::round(pixels.top()));
    const QPointF bottomRight(std::round(pixels.right()), std::round(pixels.bottom()));
    return toDevice.inverted().mapRect(QRectF(topLeft, bottomRight));
}
