#include "StationPalette.h"

namespace quillmere {

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

QColor StationPalette::mixed(const QColor& from, const QColor& to, double part)
{
    const auto mix = [part](float a, float b) { return a + (b - a) * float(part); };
    return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()), mix(from.blueF(), to.blueF()),
                            mix(from.alphaF(), to.alphaF()));
}

} // namespace quillmere
