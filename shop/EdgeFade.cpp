#include "EdgeFade.h"

#include <QPainter>
#include <QQuickWindow>

#include <algorithm>

namespace quillmere {

namespace {

// Points; a row stops on whole device pixels, possibly slightly before its end.
constexpr qreal minHiddenLength = 1;

} // namespace

EdgeFade::EdgeFade(QQuickItem* parent) : PaintedItem(parent)
{
    updateStrength();
}

void EdgeFade::setHiddenLength(qreal hiddenLength)
{
    if (m_hiddenLength == hiddenLength)
        return;
    m_hiddenLength = hiddenLength;
    updateStrength();
    Q_EMIT hiddenLengthChanged();
}

void EdgeFade::paint(QPainter& painter, const QSizeF& size) const
{
    if (!m_background)
        return;
    painter.save();
    painter.translate(backgroundOrigin());
    m_background->paint(painter, m_background->size());
    painter.restore();

    const bool isLeft = m_edge == Qt::LeftEdge;
    QLinearGradient strength(isLeft ? 0 : size.width(), 0, isLeft ? size.width() : 0, 0);
    strength.setColorAt(0, Qt::black);
    strength.setColorAt(1, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    // The painted pixels may extend slightly beyond the item.
    painter.fillRect(QRectF(QPointF(), size).adjusted(-2, -2, 2, 2), strength);
}

void EdgeFade::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        disconnect(m_frameConnection);
        if (data.window)
            m_frameConnection = connect(data.window, &QQuickWindow::afterAnimating, this, &EdgeFade::trackBackground);
    } else if (change == ItemVisibleHasChanged && data.boolValue) {
        // trackBackground() does nothing while the item is hidden.
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
    setVisible(m_hiddenLength >= minHiddenLength);
    setOpacity(std::clamp(m_hiddenLength / std::max(width(), 1.0), 0.0, 1.0));
}

/** Called for each frame. Repaints if the item has moved over the background. */
void EdgeFade::trackBackground()
{
    if (!isVisible() || backgroundOrigin() == m_paintedOrigin || !isOnDisplay())
        return;
    m_paintedOrigin = backgroundOrigin();
    repaint();
}

bool EdgeFade::isOnDisplay() const
{
    return QRectF(QPointF(), window()->size()).intersects(mapRectToScene(boundingRect()));
}

QPointF EdgeFade::backgroundOrigin() const
{
    return m_background ? m_background->mapToItem(this, QPointF()) : QPointF();
}

} // namespace quillmere
