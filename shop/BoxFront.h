#pragma once

#include "VHSCover.h"

#include <QRectF>

class QPainter;

namespace quillmere {

/**
 * The front of a cassette box: brand band, scene, genre strip, title, rating and bar code.
 * A value; any thread may paint it.
 */
struct BoxFront
{
    static constexpr double gridWidth = 320; ///< width of every box in units of the box, which its layout uses
    static constexpr double gridHeight = 500;
    static constexpr double cornerRadius = 10; ///< units

    VHSCover cover;
    double width = 0; ///< points

    static constexpr double heightOf(double width) { return width * gridHeight / gridWidth; }
    QSizeF size() const { return {width, heightOf(width)}; }

    /** The painted area, in points: the box, the outer half of its outline, and a bar code too long for the box. */
    QRectF bounds() const;

    /** Paints the box with its top left corner at the painter's origin, in points. */
    void paint(QPainter& painter) const;
};

} // namespace quillmere
