#include "SoftShadow.h"

#include <QPainter>

#include <cmath>
#include <vector>

namespace {

/** Coverage, 0 to 1, of a rounded plate's blurred edge at a signed distance outside it, in spreads. */
double coverage(double distance)
{
    // The integral of a bell curve that has all but ended after one spread.
    return 0.5 * std::erfc(distance * 2.0);
}

/** Signed distance from a plate of half size `half` around the origin, with corners of `radius`; negative inside. */
double distanceOutside(QPointF point, QPointF half, double radius)
{
    const double x = std::abs(point.x()) - half.x() + radius;
    const double y = std::abs(point.y()) - half.y() + radius;
    return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - radius;
}

} // namespace

void SoftShadow::setColor(QColor color)
{
    if (m_color == color)
        return;
    m_color = color;
    repaint();
}

void SoftShadow::setSpread(double spread)
{
    m_spread = spread;
    repaint();
}

void SoftShadow::setRadius(double radius)
{
    m_radius = radius;
    repaint();
}

void SoftShadow::paint(QPainter& painter, const QSizeF& size) const
{
    const QRectF area = QRectF(QPointF(), size).marginsAdded({m_spread, m_spread, m_spread, m_spread});
    // Painted in device pixels: the transform scales and moves, no more.
    const QTransform toDevice = painter.deviceTransform();
    const QRect pixels = toDevice.mapRect(area).toAlignedRect();
    const QTransform toPoints = toDevice.inverted();
    const QPointF half(size.width() / 2, size.height() / 2);
    QImage image(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        auto line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QPointF point = toPoints.map(QPointF(pixels.x() + x + 0.5, pixels.y() + y + 0.5)) - half;
            const double distance = distanceOutside(point, half, m_radius);
            const double alpha = m_color.alphaF() * coverage(distance / m_spread);
            line[x] = qPremultiply(qRgba(m_color.red(), m_color.green(), m_color.blue(), int(std::lround(alpha * 255))));
        }
    }
    painter.save();
    painter.resetTransform();
    painter.drawImage(pixels.topLeft(), image);
    painter.restore();
}
