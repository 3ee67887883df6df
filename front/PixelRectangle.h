#pragma once

#include "SnappedRect.h"

#include <QColor>
#include <QQuickItem>

/**
 * A rectangle of one colour. Its edges are moved to those of device pixels, at any position and size, so that they are
 * sharp and no row or column of pixels is missing. It costs as much as a plain fill. Screen thread only; its parent item
 * owns it. Rotations and shears are ignored.
 */
class PixelRectangle : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    /** Whether rectangles of equal size cover as many pixels each, as thin ones must; otherwise each edge is rounded. */
    Q_PROPERTY(bool keepsSize READ keepsSize WRITE setKeepsSize NOTIFY keepsSizeChanged FINAL)

public:
    explicit PixelRectangle(QQuickItem* parent = nullptr);

    QColor color() const { return m_color; }
    void setColor(const QColor& color);
    bool keepsSize() const { return m_snapTo == SnapTo::Size; }
    void setKeepsSize(bool keepsSize);

Q_SIGNALS:
    void colorChanged();
    void keepsSizeChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    QRectF snapped() const;
    void updateIfMoved();

    QColor m_color = Qt::white;
    SnapTo m_snapTo = SnapTo::Edges;
    QRectF m_drawn; ///< in points of the item
    QMetaObject::Connection m_frames;
};
