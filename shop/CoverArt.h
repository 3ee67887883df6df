#pragma once

#include "VHSCover.h"

#include <QColor>

class QPainter;
class QSizeF;

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
