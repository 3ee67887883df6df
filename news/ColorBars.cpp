#include "ColorBars.h"

#include <QPainter>

#include <algorithm>

namespace {

// Of the height, where the second and the third band begin.
constexpr double reversedBegin = 0.70;
constexpr double footBegin = 0.79;

const QList<QColor>& footCells()
{
    static const QList<QColor> cells{{14, 26, 50}, {240, 240, 240}, {42, 14, 50},
                                     {16, 16, 16}, {27, 27, 27},    {16, 16, 16}};
    return cells;
}

/** Cells side by side on whole pixels: where one ends the next begins, without a seam. */
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
    const double reversedTop = reversedBegin * size.height();
    const double footTop = footBegin * size.height();
    paintBand(painter, size.width(), 0, reversedTop, bars());
    paintBand(painter, size.width(), reversedTop, footTop, reversed);
    paintBand(painter, size.width(), footTop, size.height(), footCells());
}
