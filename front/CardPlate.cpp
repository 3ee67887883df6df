#include "CardPlate.h"

#include "SnappedRect.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;

namespace {

// A superellipse through the middle of the circle's arc, that leaves the edge one and a half radii before the corner.
constexpr double cornerReach = 1.5;
constexpr double cornerExponent = 3.2;
constexpr int cornerSteps = 24;

/** The plate on whole device pixels; a square one stays square, as a circle is. */
QRectF onPixels(const QPainter& painter, const QSizeF& size)
{
    QRectF plate = snappedRect(painter, QRectF(QPointF(), size));
    const double side = std::min(plate.width(), plate.height());
    if (size.width() == size.height())
        plate.setSize({side, side});
    return plate;
}

/** A line's width, at least one device pixel. */
double wholePixels(const QPainter& painter, double width)
{
    const double scale = painter.deviceTransform().m11();
    return width > 0 ? std::max(1.0, std::round(width * scale)) / scale : 0;
}

} // namespace

void CardPlate::setBackground(PaintedItem* background)
{
    if (m_background == background)
        return;
    if (m_background)
        disconnect(m_background, nullptr, this, nullptr);
    m_background = background;
    if (background)
        connect(background, &PaintedItem::artChanged, this, &CardPlate::repaint);
    repaint();
}

void CardPlate::setFill(QColor fill)
{
    if (m_fill == fill)
        return;
    m_fill = fill;
    repaint();
}

void CardPlate::setRadius(double radius)
{
    m_radius = radius;
    repaint();
}

void CardPlate::setContinuous(bool continuous)
{
    m_continuous = continuous;
    repaint();
}

void CardPlate::setBorder(QColor border)
{
    if (m_border == border)
        return;
    m_border = border;
    repaint();
}

void CardPlate::setBorderWidth(double borderWidth)
{
    m_borderWidth = borderWidth;
    repaint();
}

void CardPlate::paint(QPainter& painter, const QSizeF& size) const
{
    const QRectF plate = onPixels(painter, size);
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
    // Twice as wide, as its outer half is rubbed out below. Over art it lets an edge within a pixel be.
    if (m_background)
        painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    if (borderWidth > 0)
        painter.strokePath(inside, QPen(m_border, 2 * borderWidth));

    // A clip would leave the corners jagged: what lies outside is rubbed out instead.
    const double reach = 2 + borderWidth;
    QPainterPath outside;
    outside.addRect(plate.marginsAdded({reach, reach, reach, reach}));
    outside.addPath(inside);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outside, Qt::black);
    painter.restore();
}

QString CardPlate::look() const
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
    const double reach = std::min({cornerReach * radius, plate.width() / 2, plate.height() / 2});
    QPolygonF corner; // from the top edge to the trailing edge, as distances from the corner's centre
    for (int step = 0; step <= cornerSteps; ++step) {
        const double angle = std::numbers::pi / 2 * step / cornerSteps;
        corner << QPointF(std::pow(std::sin(angle), 2 / cornerExponent) * reach,
                          -std::pow(std::cos(angle), 2 / cornerExponent) * reach);
    }
    const QRectF centres = plate.marginsRemoved({reach, reach, reach, reach});
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
