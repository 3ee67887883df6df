#pragma once

#include "VHSCover.h"

#include <QColor>

class QPainter;
class QSizeF;

namespace quillmere {

/** The paddle steamer in the scene on a box. Stateless; any thread may paint it. */
struct Steamboat
{
    static constexpr double gridWidth = 132; ///< width of the boat in its own units
    static constexpr double gridHeight = 84; ///< height of the boat in the same units

    /** Paints the boat with its top left corner at the painter's origin; its scale depends on `size.width()` only. */
    void paint(QPainter& painter, const QSizeF& size) const;
};

/** The scene on a box: a steamboat on water in fog, in the cover's hue. A value; any thread may paint it. */
struct CoverArt
{
    VHSCover cover;
    double scale = 1; ///< painter lengths per unit of the enclosing box

    /** The colour at the top of the sky; `hue` is the cover's, in degrees. */
    static QColor skyTop(double hue);

    /** Fills an area of `size` with its top left corner at the painter's origin. */
    void paint(QPainter& painter, const QSizeF& size) const;
};

} // namespace quillmere
