#pragma once

#include <QPointF>
#include <QRect>
#include <QSizeF>

/**
 * Position and scale of painted art relative to the device's pixel grid. Equal after a move by whole pixels. A value.
 */
struct PixelPlacement
{
    static constexpr double tolerance = 1.0 / 256; ///< pixels

    QPointF phase; ///< from the pixel corner at or before the art's origin to that origin, in device pixels
    QSizeF scale;  ///< device pixels per point
    QRect pixels;  ///< pixels that the art covers, relative to that corner

    /** Whether an image painted for one can be used for the other. */
    bool operator==(const PixelPlacement& other) const;
};
