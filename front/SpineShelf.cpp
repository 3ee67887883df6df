#include "SpineShelf.h"

#include "StationPalette.h"

#include <QPainter>

namespace quillmere {

namespace {

struct Spine
{
    double hue;   // degrees
    double width; // relative to that of the other spines
};

constexpr Spine spines[] = {{4, 1.0},   {200, 1.25}, {36, 0.85},  {262, 1.1},
                            {145, 1.3}, {20, 0.9},   {210, 1.15}, {291, 1.0}};

// Lengths in points. A spine of this height, centred vertically in the strip, ends at the top of the bright edge.
constexpr double spineHeight = 180;
constexpr double gap = 8;
constexpr double sidePadding = 6;
constexpr double cornerRadius = 3;
constexpr double rimWidth = 2;
constexpr double edgeHeight = 5;

QLinearGradient spineColours(double hue, const QRectF& area)
{
    QLinearGradient gradient(area.topLeft(), area.bottomLeft());
    gradient.setColorAt(0, QColor::fromHsvF(float(hue / 360), 0.55F, 0.50F));
    gradient.setColorAt(1, QColor::fromHsvF(float(hue / 360), 0.60F, 0.26F));
    return gradient;
}

void paintSpine(QPainter& painter, const QRectF& area, double hue)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(spineColours(hue, area));
    painter.drawRoundedRect(area, cornerRadius, cornerRadius);
    painter.setPen(QPen(StationPalette::faded(StationPalette::inkNavy(), 0.8), rimWidth));
    painter.setBrush(Qt::NoBrush);
    constexpr double half = rimWidth / 2;
    painter.drawRoundedRect(area.marginsRemoved({half, half, half, half}), cornerRadius - half, cornerRadius - half);
}

} // namespace

SpineShelf::SpineShelf(QQuickItem* parent) : PaintedItem(parent)
{
    setImplicitHeight(height);
}

void SpineShelf::paint(QPainter& painter, const QSizeF& size) const
{
    painter.fillRect(QRectF(QPointF(), size), StationPalette::faded(StationPalette::inkNavy(), 0.6));

    double parts = 0;
    for (const Spine& spine : spines)
        parts += spine.width;
    const double part = (size.width() - 2 * sidePadding - gap * double(std::size(spines) - 1)) / parts;
    double x = sidePadding;
    for (const Spine& spine : spines) {
        const double width = spine.width * part;
        paintSpine(painter, QRectF(x, (size.height() - spineHeight) / 2, width, spineHeight), spine.hue);
        x += width + gap;
    }

    painter.fillRect(QRectF(0, size.height() - edgeHeight, size.width(), edgeHeight),
                     StationPalette::faded(StationPalette::amber(), 0.7));
}

} // namespace quillmere
