#include "SoftShadow.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr int steps = 512; // of the table, from one spread inside the edge to one spread outside

/** Colours of the shadow by distance from the edge: the integral of a Gaussian, almost 0 after one spread. */
std::vector<QRgb> falloffTable(const QColor& color)
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

/** Signed distance of `point` from a rounded rectangle centred at the origin, of half size `half`; negative inside. */
double distanceOutside(QPointF point, QPointF half, double radius)
{
    const double x = std::abs(point.x()) - half.x() + radius;
    const double y = std::abs(point.y()) - half.y() + radius;
    if (x <= 0 || y <= 0)
        return std::max(x, y) - radius;
    return std::sqrt(x * x + y * y) - radius;
}

} // namespace

void SoftShadow::paint(QPainter& painter, const QSizeF& size) const
{
    const QRectF area = QRectF(QPointF(), size).marginsAdded({m_spread, m_spread, m_spread, m_spread});
    // Painted in device pixels. The transform only scales and translates.
    const QTransform toDevice = painter.deviceTransform();
    const QRect pixels = toDevice.mapRect(area).toAlignedRect();
    const QPointF half(size.width() / 2, size.height() / 2);
    const QPointF pointsPerPixel(1 / toDevice.m11(), 1 / toDevice.m22());
    const QPointF first = toDevice.inverted().map(QPointF(pixels.topLeft()) + QPointF(0.5, 0.5)) - half;
    const std::vector<QRgb> colors = falloffTable(m_color);
    // More than `margin` from the corners, the distance depends on one axis only: adjacent rows, or columns, are equal.
    const double margin = std::max(m_spread, m_radius);
    const auto isUniform = [margin](double before, double now, double half) {
        return std::max(std::abs(before), std::abs(now)) <= half - margin;
    };
    // Painted row by row, because allocating a second full image costs more than computing its pixels.
    QImage row(pixels.width(), 1, QImage::Format_ARGB32_Premultiplied);
    auto* const line = reinterpret_cast<QRgb*>(row.bits());
    painter.save();
    painter.resetTransform();
    for (int y = 0; y < pixels.height(); ++y) {
        const double pointY = first.y() + y * pointsPerPixel.y();
        const bool isRepeated = y > 0 && isUniform(pointY - pointsPerPixel.y(), pointY, half.y());
        for (int x = 0; x < row.width() && !isRepeated; ++x) {
            const QPointF point(first.x() + x * pointsPerPixel.x(), pointY);
            if (x > 0 && isUniform(point.x() - pointsPerPixel.x(), point.x(), half.x())) {
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

QString SoftShadow::cacheKey() const
{
    return u"shadow %1 %2 %3"_s.arg(m_color.name(QColor::HexArgb)).arg(m_spread).arg(m_radius);
}

} // namespace quillmere
