#pragma once

#include "BoxFront.h"

/** A box front at shelf size, with a badge if its tape has a transcript. A value, painted on any thread. */
struct ShelfCard
{
    VHSCover cover;
    double width = 0; ///< points

    QSizeF size() const { return {width, BoxFront::heightOf(width)}; }

    /** Draws the card from the painter's origin on, in points. */
    void paint(QPainter& painter) const;
};
