#pragma once

#include <QList>

class QPainter;
class QSizeF;

/** A cover's bar code. A value, painted on any thread. */
struct Barcode
{
    QList<int> bars; ///< relative widths: a bar, a space, a bar and so on, each followed by a gap of one

    /** How wide a unit of `bars` is in a frame of `width`; lengths are in points. */
    double unitWidth(double width) const;

    /** How far the last bar reaches from the left edge of a frame of `width`. */
    double extent(double width) const;

    /** Fills a frame from the painter's origin on, in points; a code too long for it runs past its right edge. */
    void paint(QPainter& painter, const QSizeF& frame) const;
};
