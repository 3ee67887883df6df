#pragma once

#include <QQuickItem>

/**
 * The fixed drawing area of 1920 by 1080 points on which every screen is laid out, scaled by one factor to its parent
 * and centred in it. Screen thread only; its parent item owns it.
 */
class Canvas : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** What the viewer sees of the plane of the canvas, in its points: the canvas and what is left free beside it. */
    Q_PROPERTY(QRectF visibleArea READ visibleArea NOTIFY visibleAreaChanged FINAL)

public:
    static constexpr QSizeF points{1920, 1080};

    explicit Canvas(QQuickItem* parent = nullptr);

    QRectF visibleArea() const { return m_visibleArea; }

Q_SIGNALS:
    void visibleAreaChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void follow(QQuickItem* parent);
    void fit();

    QRectF m_visibleArea{QPointF(), points};
    QList<QMetaObject::Connection> m_connections;
};
