#include "SoftShadow.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int steps = 512; // from a spread inside the edge to a spread outside

/** The shadow's colour by its distance from the edge: a bell curve's integral, all but ended after one spread. */
std::vector<QRgb> falloff(const QColor& color)
{
    std::vector<QRgb> table(steps + 1);
    for (int step = 0; step <= steps; ++step) {
        const double spreads = 2.0 * step / steps - 1;
        const double alpha = color.alphaF() * 0.5 * std::erfc(2 * spreads);
        table[size_t(step)] =
            qPremultiply(qRgba(color.red(), color.green(), color.blue(), int(std::lround(alpha * 255))));
    }
    return table;
}

/** Signed distance from a plate of half size `half` around the origin, with corners of `radius`; negative inside. */
double distanceOutside(QPointF point, QPointF half, double radius)
{
    const double x = std::abs(point.x()) - half.x() + radius;
    const double y = std::abs(point.y()) - half.y() + radius;
    if (x <= 0 || y <= 0)
        return std::max(x, y) - radius;
    return std::sqrt(x * x + y * y) - radius;
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
    const QPointF half(size.width() / 2, size.height() / 2);
    const QPointF pointsAPixel(1 / toDevice.m11(), 1 / toDevice.m22());
    const QPointF first = toDevice.inverted().map(QPointF(pixels.topLeft()) + QPointF(0.5, 0.5)) - half;
    const std::vector<QRgb> colors = falloff(m_color);
    // As far inside as this, only the nearer pair of edges counts: rows there are alike, and so are columns.
    const double margin = std::max(m_spread, m_radius);
    const auto isAlike = [margin](double before, double now, double half) {
        return std::max(std::abs(before), std::abs(now)) <= half - margin;
    };
    // Row by row, as the memory of a second picture costs more than its pixels.
    QImage row(pixels.width(), 1, QImage::Format_ARGB32_Premultiplied);
    auto* const line = reinterpret_cast<QRgb*>(row.bits());
    painter.save();
    painter.resetTransform();
    for (int y = 0; y < pixels.height(); ++y) {
        const double pointY = first.y() + y * pointsAPixel.y();
        const bool isRepeated = y > 0 && isAlike(pointY - pointsAPixel.y(), pointY, half.y());
        for (int x = 0; x < row.width() && !isRepeated; ++x) {
            const QPointF point(first.x() + x * pointsAPixel.x(), pointY);
            if (x > 0 && isAlike(point.x() - pointsAPixel.x(), point.x(), half.x())) {
                line[x] = line[x - 1];
                continue;
            }
            const double spreads = distanceOutside(point, half, m_radius) / m_spread;
            line[x] = colors[size_t((std::clamp(spreads, -1.0, 1.0) + 1) / 2 * steps)];
        }
        painter.drawImage(pixels.left(), pixels.top() + y, row);
    }
    painter.restore();
}

QString SoftShadow::look() const
{
    return u"shadow %1 %2 %3"_s.arg(m_color.name(QColor::HexArgb)).arg(m_spread).arg(m_radius);
}
