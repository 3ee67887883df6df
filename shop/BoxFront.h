#pragma once

#include "VHSCover.h"

#include <QRectF>

class QPainter;

/**
 * The front of a cassette box: brand band, scene, genre strip, title, rating and bar code.
 * A value, painted on any thread.
 */
struct BoxFront
{
    static constexpr double gridWidth = 320; ///< the units that a box is as wide as; all its lengths are in them
    static constexpr double gridHeight = 500;
    static constexpr double cornerRadius = 10; ///< units

    VHSCover cover;
    double width = 0; ///< points

    static constexpr double heightOf(double width) { return width * gridHeight / gridWidth; }
    QSizeF size() const { return {width, heightOf(width)}; }

    /** All that is painted: the box, the outer half of its outline, and a bar code too long for it; in points. */
    QRectF bounds() const;

    /** Draws the box from the painter's origin on, in points. */
    void paint(QPainter& painter) const;
};
