#include "Spinner.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>

namespace quillmere {

namespace {

// Lengths relative to half of the width of the wheel.
constexpr double innerRadius = 0.48;
constexpr double outerRadius = 0.90;
constexpr double spokeWidth = 0.17;

constexpr double minimumOpacity = 0.15; // of the spokes farthest behind the brightest one

} // namespace

Spinner::Spinner(QQuickItem* parent) : PaintedItem(parent)
{
    setImplicitSize(side, side);
}

void Spinner::itemChange(ItemChange change, const ItemChangeData& data)
{
    PaintedItem::itemChange(change, data);
    if (change != ItemVisibleHasChanged && change != ItemSceneChange)
        return;
    if (isVisible() && window())
        m_stepTimer.start(stepTime, this);
    else
        m_stepTimer.stop();
}

void Spinner::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_stepTimer.timerId())
        return PaintedItem::timerEvent(event);
    m_brightestSpoke = (m_brightestSpoke + 1) % spokes;
    repaint();
}

void Spinner::paint(QPainter& painter, const QSizeF& size) const
{
    painter.translate(size.width() / 2, size.height() / 2);
    painter.scale(size.width() / 2, size.height() / 2);
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const int behind = (m_brightestSpoke - spoke + spokes) % spokes;
        QColor color = m_color;
        color.setAlphaF(color.alphaF() * float(std::max(minimumOpacity, 1 - double(behind) / (spokes - 2))));
        painter.setPen(QPen(color, spokeWidth, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -innerRadius), QPointF(0, -outerRadius));
        painter.rotate(360.0 / spokes);
    }
}

} // namespace quillmere
