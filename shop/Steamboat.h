#pragma once

class QPainter;
class QSizeF;

/** The paddle steamer of a cover's scene. A value without fields, painted on any thread. */
struct Steamboat
{
    static constexpr double gridWidth = 132; ///< the units that the boat is as wide as
    static constexpr double gridHeight = 84; ///< of the same units, what it reaches down to

    /** Draws the boat from the painter's origin on; `size.width()` alone decides how large it is. */
    void paint(QPainter& painter, const QSizeF& size) const;
};
