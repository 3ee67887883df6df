#include "StationPalette.h"

const QList<QColor>& StationPalette::colorBars()
{
    static const QList<QColor> bars{{192, 192, 192}, {192, 192, 0}, {0, 192, 192}, {0, 192, 0},
                                    {192, 0, 192},   {192, 0, 0},   {0, 0, 192}};
    return bars;
}

QColor StationPalette::faded(QColor color, double opacity)
{
    color.setAlphaF(float(opacity));
    return color;
}
