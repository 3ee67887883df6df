#include "SnappedRect.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

QRectF snappedRect(const QPainter& painter, const QRectF& rect, SnapTo to)
{
    const QTransform toDevice = painter.deviceTransform();
    QRectF pixels = toDevice.mapRect(rect);
    const QSizeF size(std::max(1.0, std::round(pixels.width())), std::max(1.0, std::round(pixels.height())));
    pixels.setCoords(std::round(pixels.left()), std::round(pixels.top()), std::round(pixels.right()),
                     std::round(pixels.bottom()));
    if (to == SnapTo::Size)
        pixels.setSize(size);
    return toDevice.inverted().mapRect(pixels);
}
