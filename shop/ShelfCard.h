#pragma once

#include "BoxFront.h"

namespace quillmere {

/** A box front with a badge if the tape has a transcript, as on a shelf. A value; any thread may paint it. */
struct ShelfCard
{
    VHSCover cover;
    double width = 0; ///< points

    QSizeF size() const { return {width, BoxFront::heightOf(width)}; }

    /** Paints the card with its top left corner at the painter's origin, in points. */
    void paint(QPainter& painter) const;
};

} // namespace quillmere
