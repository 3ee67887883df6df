#pragma once

#include "SnappedRect.h"

#include <QColor>
#include <QQuickItem>

/**
 * A rectangle of one colour whose edges lie on those of device pixels, wherever it stands and however long it is: as sharp
 * as a painted plate, at the cost of a plain fill. Screen thread only; its parent item owns it. Rotations and shears are
 * not followed.
 */
class PixelRectangle : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    /** Whether equal ones show equally large, as thin ones must; otherwise each edge is as near to its place as it can be. */
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
    void follow();

    QColor m_color = Qt::white;
    SnapTo m_snapTo = SnapTo::Edges;
    QRectF m_shown; ///< on the glass, in points of the item
    QMetaObject::Connection m_frames;
};
