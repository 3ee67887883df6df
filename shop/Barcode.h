#pragma once

#include <QList>

class QPainter;
class QSizeF;

namespace quillmere {

/** The bar code on a box. A value; any thread may paint it. */
struct Barcode
{
    QList<int> bars; ///< relative widths of bars and spaces in turn, starting with a bar; a gap of 1 follows each

    /** The width of one unit of `bars` in a frame of `width`; both in points. */
    double unitWidth(double width) const;

    /** Distance from the left edge of a frame of `width` to the end of the last bar; both in points. */
    double extent(double width) const;

    /** Paints at the painter's origin, in points; a code too long for the frame extends past its right edge. */
    void paint(QPainter& painter, const QSizeF& frame) const;
};

} // namespace quillmere
