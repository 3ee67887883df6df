#include "Barcode.h"

#include "StationPalette.h"

#include <QPainter>

#include <algorithm>

namespace quillmere {

namespace {

constexpr double minUnitWidth = 1; // point

} // namespace

double Barcode::unitWidth(double width) const
{
    double units = 0;
    for (const int bar : bars)
        units += bar + 1;
    return std::max(width / units, minUnitWidth);
}

double Barcode::extent(double width) const
{
    double units = 0;
    double end = 0;
    for (qsizetype i = 0; i < bars.size(); ++i) {
        units += bars.at(i);
        if (i % 2 == 0)
            end = units;
        ++units;
    }
    return bars.isEmpty() ? 0 : end * unitWidth(width);
}

void Barcode::paint(QPainter& painter, const QSizeF& frame) const
{
    if (bars.isEmpty())
        return;
    const double unit = unitWidth(frame.width());
    double x = 0;
    for (qsizetype i = 0; i < bars.size(); ++i) {
        const double width = unit * bars.at(i);
        if (i % 2 == 0)
            painter.fillRect(QRectF(x, 0, width, frame.height()), StationPalette::inkNavy());
        x += width + unit;
    }
}

} // namespace quillmere
