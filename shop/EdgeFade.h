#pragma once

#include "PaintedItem.h"

#include <QPointer>

namespace quillmere {

/**
 * Fades out a row at an end where it is clipped. Lies over that end and paints the part of the row's background that is
 * below it, pixel for pixel, opaque at the edge and transparent at the other side. `background` may be null.
 */
class EdgeFade : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::PaintedItem* background READ background WRITE setBackground NOTIFY artChanged FINAL)
    /** Qt::LeftEdge or Qt::RightEdge: the side at which only the background is visible. */
    Q_PROPERTY(Qt::Edge edge READ edge WRITE setEdge NOTIFY artChanged FINAL)
    /** Length of the row beyond the edge, in points. Below the item's width the fade is weaker; at 0 it is hidden. */
    Q_PROPERTY(qreal hiddenLength READ hiddenLength WRITE setHiddenLength NOTIFY hiddenLengthChanged FINAL)

public:
    explicit EdgeFade(QQuickItem* parent = nullptr);

    PaintedItem* background() const { return m_background; }
    void setBackground(PaintedItem* background) { setInput(m_background, background); }
    Qt::Edge edge() const { return m_edge; }
    void setEdge(Qt::Edge edge) { setInput(m_edge, edge); }
    qreal hiddenLength() const { return m_hiddenLength; }
    void setHiddenLength(qreal hiddenLength);

    void paint(QPainter& painter, const QSizeF& size) const override;

Q_SIGNALS:
    void hiddenLengthChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    void updateStrength();
    void trackBackground();
    bool isOnDisplay() const;
    QPointF backgroundOrigin() const;

    QPointer<PaintedItem> m_background;
    Qt::Edge m_edge = Qt::LeftEdge;
    qreal m_hiddenLength = 0;
    QPointF m_paintedOrigin; ///< the background's origin when this was last painted
    QMetaObject::Connection m_frameConnection;
};

} // namespace quillmere
