#include "Steamboat.h"

#include "CardPlate.h"
#include "StationPalette.h"

#include <QPainter>

namespace {

// In units of the boat.
constexpr QRectF glow(28, 0, 42, 42);
constexpr double glowOpacity = 0.55;
constexpr QRectF wheel(94, 36, 34, 34);
constexpr double rimWidth = 3.5;
constexpr double spokeWidth = 2.5;
constexpr QRectF hull(6, 54, 106, 24);
constexpr double hullRadius = 5;
constexpr QRectF cabin(22, 32, 66, 23);
constexpr QRectF smokestack(34, 13, 11, 20);
constexpr QRectF smoke(33, 3, 13, 13);
constexpr QSizeF window(8, 9);
constexpr double windowTop = 38;
constexpr double windows[] = {28, 43, 58, 73};

void paintWheel(QPainter& painter)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(StationPalette::cream(), rimWidth));
    painter.drawEllipse(wheel);
    painter.setPen(QPen(StationPalette::cream(), spokeWidth, Qt::SolidLine, Qt::FlatCap));
    const QPointF centre = wheel.center();
    painter.drawLine(QPointF(centre.x(), wheel.top()), QPointF(centre.x(), wheel.bottom()));
    painter.drawLine(QPointF(wheel.left(), centre.y()), QPointF(wheel.right(), centre.y()));
    painter.setPen(Qt::NoPen);
}

} // namespace

void Steamboat::paint(QPainter& painter, const QSizeF& size) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size.width() / gridWidth, size.width() / gridWidth);
    painter.setPen(Qt::NoPen);
    painter.setBrush(StationPalette::faded(StationPalette::amber(), glowOpacity));
    painter.drawEllipse(glow);
    paintWheel(painter);
    painter.fillPath(CardPlate::continuousOutline(hull, hullRadius), StationPalette::inkNavy());
    painter.fillRect(cabin, StationPalette::inkNavy());
    painter.fillRect(smokestack, StationPalette::inkNavy());
    painter.setBrush(StationPalette::teal());
    painter.drawEllipse(smoke);
    for (const double x : windows)
        painter.fillRect(QRectF(QPointF(x, windowTop), window), StationPalette::cream());
    painter.restore();
}
