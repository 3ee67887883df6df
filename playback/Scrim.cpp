#include "Scrim.h"

#include <QPainter>

namespace quillmere {

namespace {

constexpr int stops = 8;

// Fraction of the height in which the gradient lies; texts stand below.
constexpr double gradientHeight = 0.65;

} // namespace

void Scrim::paint(QPainter& painter, const QSizeF& size) const
{
    // Smoothstep: a linear gradient would have a visible upper edge.
    QLinearGradient gradient(0, 0, 0, size.height());
    for (int stop = 0; stop <= stops; ++stop) {
        const double depth = double(stop) / stops;
        QColor color = m_color;
        color.setAlphaF(color.alphaF() * float(depth * depth * (3 - 2 * depth)));
        gradient.setColorAt(gradientHeight * depth, color);
    }
    painter.fillRect(QRectF(QPointF(), size), gradient);
}

} // namespace quillmere
