#include "Icon.h"

#include "SnappedRect.h"

#include <QPainter>

#include <array>
#include <cmath>

namespace quillmere {

namespace {

// Icons are drawn on a square of 100 units. The stroke is as wide as that of the letters beside them.
constexpr double grid = 100;
constexpr double stroke = 11;

QPen pen(const QColor& color, double width = stroke)
{
    return {color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

void drawMagnifyingGlass(QPainter& painter, const QColor& color)
{
    const QPointF centre(42, 42);
    constexpr double radius = 30;
    constexpr double handle = 91; // x and y of its end
    const double rim = centre.x() + radius * std::sqrt(0.5);
    painter.setPen(pen(color));
    painter.drawEllipse(centre, radius, radius);
    painter.setPen(pen(color, stroke * 1.2));
    painter.drawLine(QPointF(rim, rim), QPointF(handle, handle));
}

void drawPlay(QPainter& painter, const QColor& color)
{
    // A stroke of the same colour rounds the corners. The centroid of the triangle is at the centre of the square.
    constexpr double rounding = 10;
    const QRectF area = snappedRect(painter, {18, 9, 76, 82}, SnapTo::Size);
    const QRectF inner = area.marginsRemoved({rounding / 2, rounding / 2, rounding / 2, rounding / 2});
    painter.setPen(pen(color, rounding));
    painter.setBrush(color);
    painter.drawPolygon(QPolygonF{inner.topLeft(), QPointF(inner.right(), inner.center().y()), inner.bottomLeft()});
}

void drawStartOver(QPainter& painter, const QColor& color)
{
    // An arc that leaves a gap left of the top. The arrowhead is at the top and points left.
    const QPointF centre(50, 56);
    constexpr double radius = 35;
    constexpr double gapEnd = 150; // degrees, anticlockwise from the right (3 o'clock)
    const QRectF circle(centre - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
    painter.setPen(pen(color));
    painter.drawArc(circle, int(gapEnd * 16), int((90 + 360 - gapEnd) * 16));
    const QPointF tip(centre.x() - 26, centre.y() - radius);
    const QPolygonF head{tip, tip + QPointF(26, -17), tip + QPointF(26, 17)};
    painter.setPen(pen(color, 4));
    painter.setBrush(color);
    painter.drawPolygon(head);
}

void drawTextLines(QPainter& painter, const QColor& color)
{
    constexpr std::array lengths{84.0, 56.0, 84.0, 44.0};
    constexpr double left = 8;
    constexpr double first = 13; // top of the first line
    constexpr double pitch = 21.5;
    for (size_t line = 0; line < lengths.size(); ++line)
        painter.fillRect(snappedRect(painter, {left, first + double(line) * pitch, lengths[line], 10}, SnapTo::Size),
                         color);
}

void drawPause(QPainter& painter, const QColor& color)
{
    constexpr double rounding = 6;
    painter.setPen(pen(color, rounding));
    painter.setBrush(color);
    for (const double left : {17.0, 59.0}) {
        const QRectF bar = snappedRect(painter, {left, 11, 24, 78}, SnapTo::Size);
        painter.drawRect(bar.marginsRemoved({rounding / 2, rounding / 2, rounding / 2, rounding / 2}));
    }
}

void drawFastForward(QPainter& painter, const QColor& color)
{
    constexpr double rounding = 8;
    painter.setPen(pen(color, rounding));
    painter.setBrush(color);
    for (const double left : {3.0, 50.0}) {
        const QRectF area =
            QRectF(left, 18, 47, 64).marginsRemoved({rounding / 2, rounding / 2, rounding / 2, rounding / 2});
        painter.drawPolygon(QPolygonF{area.topLeft(), QPointF(area.right(), area.center().y()), area.bottomLeft()});
    }
}

} // namespace

void Icon::paint(QPainter& painter, const QSizeF& size) const
{
    painter.scale(size.width() / grid, size.height() / grid);
    switch (m_name) {
    case None:
        break;
    case MagnifyingGlass:
        drawMagnifyingGlass(painter, m_color);
        break;
    case Play:
        drawPlay(painter, m_color);
        break;
    case StartOver:
        drawStartOver(painter, m_color);
        break;
    case TextLines:
        drawTextLines(painter, m_color);
        break;
    case Pause:
        drawPause(painter, m_color);
        break;
    case Rewind:
        painter.translate(grid, 0);
        painter.scale(-1, 1);
        [[fallthrough]];
    case FastForward:
        drawFastForward(painter, m_color);
        break;
    }
}

} // namespace quillmere
