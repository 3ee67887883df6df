#include "CoverArt.h"

#include "CardPlate.h"
#include "SnappedRect.h"
#include "StationPalette.h"

#include <QLinearGradient>
#include <QPainter>

#include <cmath>

namespace quillmere {

namespace {

// The disc in the sky, in units of the box.
constexpr double discDiameter = 52;
constexpr QPointF discFromTopTrailing(52, 48);
constexpr double discOpacity = 0.9;

// Fractions of the scene's size.
constexpr double waterHeight = 0.27;
constexpr double fogHeight = 0.3;
constexpr double fogOpacity = 0.8;
constexpr double boatWidth = 0.7;
constexpr double boatProportion = 7.0 / 11;
constexpr QPointF boatCentre(0.47, 0.6);

QColor fromHue(double hue, float saturation, float brightness)
{
    const double turns = hue / 360;
    return QColor::fromHsvF(float(turns - std::floor(turns)), saturation, brightness);
}

QRectF bottomBand(const QPainter& painter, const QSizeF& size, double fraction)
{
    return snappedRect(painter, QRectF(0, size.height() * (1 - fraction), size.width(), size.height() * fraction));
}

void paintSky(QPainter& painter, const QSizeF& size, double hue)
{
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, CoverArt::skyTop(hue));
    sky.setColorAt(1, fromHue(hue, 0.60F, 0.22F));
    painter.fillRect(snappedRect(painter, QRectF(QPointF(), size)), sky);
}

void paintBoat(QPainter& painter, const QSizeF& size)
{
    const QSizeF boat(size.width() * boatWidth, size.width() * boatWidth * boatProportion);
    const QPointF centre(size.width() * boatCentre.x(), size.height() * boatCentre.y());
    painter.save();
    painter.translate(centre.x() - boat.width() / 2, centre.y() - boat.height() / 2);
    Steamboat().paint(painter, boat);
    painter.restore();
}

void paintFog(QPainter& painter, const QSizeF& size)
{
    const QRectF band = bottomBand(painter, size, fogHeight);
    QLinearGradient fog(band.topLeft(), band.bottomLeft());
    fog.setColorAt(0, StationPalette::faded(StationPalette::cream(), 0));
    fog.setColorAt(1, StationPalette::faded(StationPalette::cream(), fogOpacity));
    painter.fillRect(band, fog);
}

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

QColor CoverArt::skyTop(double hue)
{
    return fromHue(hue, 0.55F, 0.42F);
}

void CoverArt::paint(QPainter& painter, const QSizeF& size) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    paintSky(painter, size, cover.hue);
    painter.setPen(Qt::NoPen);
    painter.setBrush(StationPalette::faded(StationPalette::teal(), discOpacity));
    const double radius = discDiameter / 2 * scale;
    painter.drawEllipse(QPointF(size.width() - discFromTopTrailing.x() * scale, discFromTopTrailing.y() * scale),
                        radius, radius);
    painter.fillRect(bottomBand(painter, size, waterHeight), fromHue(cover.hue, 0.45F, 0.30F));
    paintBoat(painter, size);
    paintFog(painter, size);
    painter.restore();
}

} // namespace quillmere
