#pragma once

#include "PaintedItem.h"

#include <QPointer>

/**
 * Lies over the end of a row that is cut there, and shows ever more of the row's ground towards the edge, so that the row
 * fades out. It is the ground's own art, pixel for pixel, wherever it stands on the ground; `ground` may be null.
 */
class EdgeFade : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(PaintedItem* ground READ ground WRITE setGround NOTIFY artChanged FINAL)
    /** Qt::LeftEdge or Qt::RightEdge: the side at which the ground alone is seen. */
    Q_PROPERTY(Qt::Edge edge READ edge WRITE setEdge NOTIFY artChanged FINAL)
    /** How much of the row lies beyond the edge, in points: without any there is no fade, with a little a weak one. */
    Q_PROPERTY(qreal hidden READ hidden WRITE setHidden NOTIFY hiddenChanged FINAL)

public:
    explicit EdgeFade(QQuickItem* parent = nullptr);

    PaintedItem* ground() const { return m_ground; }
    void setGround(PaintedItem* ground);
    Qt::Edge edge() const { return m_edge; }
    void setEdge(Qt::Edge edge);
    qreal hidden() const { return m_hidden; }
    void setHidden(qreal hidden);

    void paint(QPainter& painter, const QSizeF& size) const override;

Q_SIGNALS:
    void hiddenChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    void updateStrength();
    void trackGround();
    bool isOnDisplay() const;
    QPointF groundOrigin() const;

    QPointer<PaintedItem> m_ground;
    Qt::Edge m_edge = Qt::LeftEdge;
    qreal m_hidden = 0;
    QPointF m_origin; ///< of the ground, when this was last painted for it
    QMetaObject::Connection m_frames;
};
