#include "Spinner.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>

namespace {

// Lengths as parts of half the wheel's side.
constexpr double hub = 0.48;
constexpr double rim = 0.90;
constexpr double spokeWidth = 0.17;

constexpr double faintest = 0.15; // opacity of the spokes that the leader left long ago

} // namespace

Spinner::Spinner(QQuickItem* parent) : PaintedItem(parent)
{
    setImplicitSize(side, side);
}

void Spinner::setColor(QColor color)
{
    if (m_color == color)
        return;
    m_color = color;
    repaint();
}

void Spinner::itemChange(ItemChange change, const ItemChangeData& data)
{
    PaintedItem::itemChange(change, data);
    if (change != ItemVisibleHasChanged && change != ItemSceneChange)
        return;
    if (isVisible() && window())
        m_steps.start(stepTime, this);
    else
        m_steps.stop();
}

void Spinner::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_steps.timerId())
        return PaintedItem::timerEvent(event);
    m_leader = (m_leader + 1) % spokes;
    repaint();
}

void Spinner::paint(QPainter& painter, const QSizeF& size) const
{
    painter.translate(size.width() / 2, size.height() / 2);
    painter.scale(size.width() / 2, size.height() / 2);
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const int behind = (m_leader - spoke + spokes) % spokes;
        QColor color = m_color;
        color.setAlphaF(color.alphaF() * float(std::max(faintest, 1 - double(behind) / (spokes - 2))));
        painter.setPen(QPen(color, spokeWidth, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -hub), QPointF(0, -rim));
        painter.rotate(360.0 / spokes);
    }
}
