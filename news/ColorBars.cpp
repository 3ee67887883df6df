#include "ColorBars.h"

#include <QPainter>

#include <algorithm>

namespace quillmere {

namespace {

// Top of the second and of the third band, relative to the height.
constexpr double reversedBandTop = 0.70;
constexpr double bottomBandTop = 0.79;

const QList<QColor>& bottomCells()
{
    static const QList<QColor> cells{{14, 26, 50}, {240, 240, 240}, {42, 14, 50},
                                     {16, 16, 16}, {27, 27, 27},    {16, 16, 16}};
    return cells;
}

/** Paints cells side by side. Their edges are on whole pixels, so that no seam is visible between them. */
void paintBand(QPainter& painter, double width, double top, double bottom, const QList<QColor>& cells)
{
    const QTransform toDevice = painter.deviceTransform();
    const auto corner = [&](qsizetype cell, double y) {
        return toDevice.map(QPointF(width * double(cell) / double(cells.size()), y)).toPoint();
    };
    painter.save();
    painter.resetTransform();
    for (qsizetype cell = 0; cell < cells.size(); ++cell) {
        const QPoint pastEnd = corner(cell + 1, bottom);
        painter.fillRect(QRect(corner(cell, top), pastEnd - QPoint(1, 1)), cells.at(cell));
    }
    painter.restore();
}

} // namespace

void ColorBars::paint(QPainter& painter, const QSizeF& size) const
{
    QList<QColor> reversed = bars();
    std::reverse(reversed.begin(), reversed.end());
    const double reversedTop = reversedBandTop * size.height();
    const double bottomTop = bottomBandTop * size.height();
    paintBand(painter, size.width(), 0, reversedTop, bars());
    paintBand(painter, size.width(), reversedTop, bottomTop, reversed);
    paintBand(painter, size.width(), bottomTop, size.height(), bottomCells());
}

} // namespace quillmere
