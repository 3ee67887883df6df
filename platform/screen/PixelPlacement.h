#pragma once

#include <QPointF>
#include <QRect>
#include <QSizeF>

namespace quillmere {

struct DevicePixels;

/**
 * Position and scale of a picture relative to the device's pixel grid. Equal after a move by whole pixels. A value.
 */
struct PixelPlacement
{
    static constexpr double tolerance = 1.0 / 256; ///< pixels

    QPointF phase; ///< from a pixel corner near the item's origin to that origin, in device pixels
    QSizeF scale;  ///< device pixels per point
    QRect pixels;  ///< pixels that the picture covers, relative to that corner

    /** Covers all pixels that `area`, in points of the item, touches. */
    static PixelPlacement covering(const DevicePixels& device, const QRectF& area);

    /** Starts at the nearest pixel corner. Items of equal `size`, in points, cover the same number of pixels. */
    static PixelPlacement rounded(const DevicePixels& device, const QSizeF& size);

    /** The area of `pixels`, in points of the item. */
    QRectF area() const;

    /** Whether a picture painted for one can be used for the other. */
    bool operator==(const PixelPlacement& other) const;
};

/** Rounds half up, also if a rounding error has reduced the half slightly, so that equal lengths stay equal. */
double wholePixel(double pixels);

} // namespace quillmere
