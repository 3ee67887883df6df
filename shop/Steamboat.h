#pragma once

class QPainter;
class QSizeF;

/** The paddle steamer in the scene on a box. Stateless; any thread may paint it. */
struct Steamboat
{
    static constexpr double gridWidth = 132; ///< width of the boat in its own units
    static constexpr double gridHeight = 84; ///< height of the boat in the same units

    /** Paints the boat with its top left corner at the painter's origin; its scale depends on `size.width()` only. */
    void paint(QPainter& painter, const QSizeF& size) const;
};
