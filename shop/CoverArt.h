#pragma once

#include "VHSCover.h"

#include <QColor>

class QPainter;
class QSizeF;

/** The painted scene of a cover: a steamer on water in its hue, under fog. A value, painted on any thread. */
struct CoverArt
{
    VHSCover cover;
    double scale = 1; ///< the length of a unit of the enclosing box

    /** The sky's colour at its top, by the cover's hue in degrees. */
    static QColor skyTop(double hue);

    /** Fills a space of `size` from the painter's origin on. */
    void paint(QPainter& painter, const QSizeF& size) const;
};
