#include "CardPlate.h"

#include "SnappedRect.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

// The corner is a superellipse. It passes through the middle of the circular arc and starts 1.5 radii before the
// corner.
constexpr double cornerExtent = 1.5;
constexpr double cornerExponent = 3.2;
constexpr int cornerSteps = 24;

/** Plate rectangle on whole device pixels. A square plate stays square, so that circles stay round. */
QRectF plateOnPixels(const QPainter& painter, const QSizeF& size)
{
    QRectF plate = snappedRect(painter, QRectF(QPointF(), size));
    const double side = std::min(plate.width(), plate.height());
    if (size.width() == size.height())
        plate.setSize({side, side});
    return plate;
}

/** `width` rounded to whole device pixels: at least one, or 0 for no line. In points. */
double wholePixels(const QPainter& painter, double width)
{
    const double scale = painter.deviceTransform().m11();
    return width > 0 ? std::max(1.0, std::round(width * scale)) / scale : 0;
}

} // namespace

void CardPlate::paint(QPainter& painter, const QSizeF& size) const
{
    const QRectF plate = plateOnPixels(painter, size);
    const double borderWidth = wholePixels(painter, m_borderWidth);
    const QPainterPath inside = outline(plate);
    painter.save();
    painter.fillRect(plate, m_fill);
    if (m_background) {
        painter.save();
        painter.translate(plate.topLeft());
        m_background->paint(painter, plate.size());
        painter.restore();
    }
    // The border pen is twice as wide, because its outer half is erased below.
    // Over art, SourceAtop keeps the transparency of partly covered edge pixels.
    if (m_background)
        painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    if (borderWidth > 0)
        painter.strokePath(inside, QPen(m_border, 2 * borderWidth));

    // A clip path is not antialiased. So erase what lies outside the outline instead of clipping.
    const double extent = 2 + borderWidth;
    QPainterPath outside;
    outside.addRect(plate.marginsAdded({extent, extent, extent, extent}));
    outside.addPath(inside);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outside, Qt::black);
    painter.restore();
}

QString CardPlate::cacheKey() const
{
    if (m_background)
        return {};
    return u"plate %1 %2 %3 %4 %5"_s.arg(m_fill.name(QColor::HexArgb), m_border.name(QColor::HexArgb))
        .arg(m_borderWidth)
        .arg(m_radius)
        .arg(m_continuous);
}

QPainterPath CardPlate::outline(const QRectF& plate) const
{
    if (m_continuous)
        return continuousOutline(plate, m_radius);
    QPainterPath path;
    path.addRoundedRect(plate, m_radius, m_radius);
    return path;
}

QPainterPath CardPlate::continuousOutline(const QRectF& plate, double radius)
{
    const double extent = std::min({cornerExtent * radius, plate.width() / 2, plate.height() / 2});
    QPolygonF corner; // from the top edge to the right edge, relative to the centre of the corner
    for (int step = 0; step <= cornerSteps; ++step) {
        const double angle = std::numbers::pi / 2 * step / cornerSteps;
        corner << QPointF(std::pow(std::sin(angle), 2 / cornerExponent) * extent,
                          -std::pow(std::cos(angle), 2 / cornerExponent) * extent);
    }
    const QRectF centres = plate.marginsRemoved({extent, extent, extent, extent});
    const QPointF anchors[] = {centres.topRight(), centres.bottomRight(), centres.bottomLeft(), centres.topLeft()};
    QPolygonF outline;
    for (const QPointF& anchor : anchors) {
        for (const QPointF& point : std::as_const(corner))
            outline << anchor + point;
        for (QPointF& point : corner)
            point = {-point.y(), point.x()};
    }
    QPainterPath path;
    path.addPolygon(outline);
    path.closeSubpath();
    return path;
}

} // namespace quillmere
