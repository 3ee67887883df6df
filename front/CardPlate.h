#pragma once

#include "PaintedItem.h"

#include <QColor>
#include <QPainterPath>
#include <QPointer>

namespace quillmere {

/**
 * A rectangle with rounded corners, filled with a colour or with the art of another item. The border is drawn along the
 * inside of its edge. Everything is aligned to whole device pixels.
 * `background` is painted into this item and never shown itself. If it is null, only `fill` fills the plate.
 */
class CardPlate : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::PaintedItem* background READ background WRITE setBackground NOTIFY artChanged FINAL)
    Q_PROPERTY(QColor fill READ fill WRITE setFill NOTIFY artChanged FINAL)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY artChanged FINAL)
    /** Whether the curvature of the corners changes continuously (a superellipse, not a circular arc). */
    Q_PROPERTY(bool continuous READ isContinuous WRITE setContinuous NOTIFY artChanged FINAL)
    Q_PROPERTY(QColor border READ border WRITE setBorder NOTIFY artChanged FINAL)
    Q_PROPERTY(double borderWidth READ borderWidth WRITE setBorderWidth NOTIFY artChanged FINAL)

public:
    using PaintedItem::PaintedItem;

    PaintedItem* background() const { return m_background; }
    void setBackground(PaintedItem* background) { setInput(m_background, background); }
    QColor fill() const { return m_fill; }
    void setFill(QColor fill) { setInput(m_fill, fill); }
    double radius() const { return m_radius; }
    void setRadius(double radius) { setInput(m_radius, radius); }
    bool isContinuous() const { return m_continuous; }
    void setContinuous(bool continuous) { setInput(m_continuous, continuous); }
    QColor border() const { return m_border; }
    void setBorder(QColor border) { setInput(m_border, border); }
    double borderWidth() const { return m_borderWidth; }
    void setBorderWidth(double borderWidth) { setInput(m_borderWidth, borderWidth); }

    void paint(QPainter& painter, const QSizeF& size) const override;
    QString cacheKey() const override;

    /**
     * Outline of a plate whose corner curvature starts at zero where the corner meets the edge. `radius` is that of the
     * circular corner that looks alike.
     */
    static QPainterPath continuousOutline(const QRectF& plate, double radius);

private:
    QPainterPath outline(const QRectF& plate) const;

    QPointer<PaintedItem> m_background;
    QColor m_fill = Qt::transparent;
    double m_radius = 0;
    bool m_continuous = false;
    QColor m_border = Qt::transparent;
    double m_borderWidth = 0;
};

} // namespace quillmere
