#include "SnappedRect.h"

#include "PixelPlacement.h"

#include <QPainter>

#include <algorithm>

namespace quillmere {

QRectF snappedRect(const QTransform& toDevice, const QRectF& rect, SnapTo to)
{
    QRectF pixels = toDevice.mapRect(rect);
    const QSizeF size(std::max(1.0, wholePixel(pixels.width())), std::max(1.0, wholePixel(pixels.height())));
    pixels.setCoords(wholePixel(pixels.left()), wholePixel(pixels.top()), wholePixel(pixels.right()),
                     wholePixel(pixels.bottom()));
    if (to == SnapTo::Size)
        pixels.setSize(size);
    return toDevice.inverted().mapRect(pixels);
}

QRectF snappedRect(const QPainter& painter, const QRectF& rect, SnapTo to)
{
    return snappedRect(painter.deviceTransform(), rect, to);
}

} // namespace quillmere
