#include "CoverArt.h"

#include "SnappedRect.h"
#include "StationPalette.h"
#include "Steamboat.h"

#include <QLinearGradient>
#include <QPainter>

#include <cmath>

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

} // namespace

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
