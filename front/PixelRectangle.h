#pragma once

#include "SnappedRect.h"

#include <QColor>
#include <QQuickItem>

namespace quillmere {

/**
 * A rectangle of one colour. At any position and size, its edges are aligned to device pixels. So they are sharp, and
 * no row or column of pixels is missing. Drawing it costs as much as drawing a plain Rectangle. Screen thread only; its
 * parent item owns it. Rotations and shears are ignored.
 */
class PixelRectangle : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    /**
     * Whether rectangles of equal size always cover the same number of pixels, which thin ones need. If not, each edge
     * is rounded on its own.
     */
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
    QRectF snappedGeometry() const;
    void updateIfMoved();

    QColor m_color = Qt::white;
    SnapTo m_snapTo = SnapTo::Edges;
    QRectF m_drawnGeometry; ///< last drawn, in points of the item
    QMetaObject::Connection m_frameConnection;
};

} // namespace quillmere
