#include "PixelPlacement.h"

#include "DevicePixels.h"

#include <cmath>

namespace quillmere {

namespace {

bool near(double a, double b)
{
    return std::abs(a - b) < PixelPlacement::tolerance;
}

double fraction(double x)
{
    return x - std::floor(x + PixelPlacement::tolerance);
}

/** The smallest rectangle of whole pixels that contains `area`, ignoring rounding errors. */
QRect touchedPixels(const QRectF& area)
{
    const QPoint topLeft(int(std::floor(area.left() + PixelPlacement::tolerance)),
                         int(std::floor(area.top() + PixelPlacement::tolerance)));
    const QPoint end(int(std::ceil(area.right() - PixelPlacement::tolerance)),
                     int(std::ceil(area.bottom() - PixelPlacement::tolerance)));
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

} // namespace

PixelPlacement PixelPlacement::covering(const DevicePixels& device, const QRectF& area)
{
    const QPointF phase(fraction(device.origin.x()), fraction(device.origin.y()));
    const QSizeF scale = device.scale;
    return {phase, scale,
            touchedPixels(QRectF(phase.x() + area.x() * scale.width(), phase.y() + area.y() * scale.height(),
                                 area.width() * scale.width(), area.height() * scale.height()))};
}

PixelPlacement PixelPlacement::rounded(const DevicePixels& device, const QSizeF& size)
{
    const QPointF corner(wholePixel(device.origin.x()), wholePixel(device.origin.y()));
    const QSize pixels(int(wholePixel(size.width() * device.scale.width())),
                       int(wholePixel(size.height() * device.scale.height())));
    return {device.origin - corner, device.scale, QRect(QPoint(), pixels)};
}

QRectF PixelPlacement::area() const
{
    const QPointF corner = pixels.topLeft() - phase;
    return {corner.x() / scale.width(), corner.y() / scale.height(), pixels.width() / scale.width(),
            pixels.height() / scale.height()};
}

bool PixelPlacement::operator==(const PixelPlacement& other) const
{
    return pixels == other.pixels && near(phase.x(), other.phase.x()) && near(phase.y(), other.phase.y()) &&
           near(scale.width() * pixels.width(), other.scale.width() * pixels.width()) &&
           near(scale.height() * pixels.height(), other.scale.height() * pixels.height());
}

double wholePixel(double pixels)
{
    return std::floor(pixels + 0.5 + PixelPlacement::tolerance);
}

} // namespace quillmere
