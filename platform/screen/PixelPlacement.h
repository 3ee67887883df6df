#pragma once

#include <QPointF>
#include <QRect>
#include <QSizeF>

/** How painted art stands on the grid of the device's pixels; a move by whole ones makes no difference. A value. */
struct PixelPlacement
{
    static constexpr double tolerance = 1.0 / 256; ///< pixels

    QPointF phase; ///< from a corner of the grid to the art's origin, in device pixels
    QSizeF scale;  ///< device pixels a point
    QRect pixels;  ///< what the art covers, from that corner of the grid

    /** Whether a picture painted for one serves the other. */
    bool operator==(const PixelPlacement& other) const;
};
