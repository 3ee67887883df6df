#include "EdgeFade.h"

#include <QPainter>
#include <QQuickWindow>

#include <algorithm>

namespace {

constexpr qreal rounding = 1; // points; a row stops on whole device pixels, a little before its end

} // namespace

EdgeFade::EdgeFade(QQuickItem* parent) : PaintedItem(parent)
{
    updateStrength();
}

void EdgeFade::setGround(PaintedItem* ground)
{
    if (m_ground == ground)
        return;
    if (m_ground)
        disconnect(m_ground, nullptr, this, nullptr);
    m_ground = ground;
    if (ground)
        connect(ground, &PaintedItem::artChanged, this, &EdgeFade::repaint);
    repaint();
}

void EdgeFade::setEdge(Qt::Edge edge)
{
    if (m_edge == edge)
        return;
    m_edge = edge;
    repaint();
}

void EdgeFade::setHidden(qreal hidden)
{
    if (m_hidden == hidden)
        return;
    m_hidden = hidden;
    updateStrength();
    Q_EMIT hiddenChanged();
}

void EdgeFade::paint(QPainter& painter, const QSizeF& size) const
{
    if (!m_ground)
        return;
    painter.save();
    painter.translate(groundOrigin());
    m_ground->paint(painter, m_ground->size());
    painter.restore();

    const bool isLeft = m_edge == Qt::LeftEdge;
    QLinearGradient strength(isLeft ? 0 : size.width(), 0, isLeft ? size.width() : 0, 0);
    strength.setColorAt(0, Qt::black);
    strength.setColorAt(1, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    // The pixels at the rim may reach past the item.
    painter.fillRect(QRectF(QPointF(), size).adjusted(-2, -2, 2, 2), strength);
}

void EdgeFade::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        disconnect(m_frames);
        if (data.window)
            m_frames = connect(data.window, &QQuickWindow::afterAnimating, this, &EdgeFade::trackGround);
    } else if (change == ItemVisibleHasChanged && data.boolValue) {
        // While hidden it has not tracked the ground.
        repaint();
    }
    PaintedItem::itemChange(change, data);
}

void EdgeFade::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    PaintedItem::geometryChange(newGeometry, oldGeometry);
    updateStrength();
}

void EdgeFade::updateStrength()
{
    setVisible(m_hidden >= rounding);
    setOpacity(std::clamp(m_hidden / std::max(width(), 1.0), 0.0, 1.0));
}

/** Once a frame: notices that the row moves over its ground. */
void EdgeFade::trackGround()
{
    if (!isVisible() || groundOrigin() == m_origin || !isOnDisplay())
        return;
    m_origin = groundOrigin();
    repaint();
}

bool EdgeFade::isOnDisplay() const
{
    return QRectF(QPointF(), window()->size()).intersects(mapRectToScene(boundingRect()));
}

QPointF EdgeFade::groundOrigin() const
{
    return m_ground ? m_ground->mapToItem(this, QPointF()) : QPointF();
}
