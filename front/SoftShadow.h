#pragma once

#include "PaintedItem.h"

#include <QColor>

namespace quillmere {

/**
 * The soft shadow of a plate as large as the item, or the glow of a round lamp. While it fades or is being scaled, its
 * picture is reused; equal shadows share one. `spread` is the distance from the edge, in points, at which the
 * shadow is transparent. `radius` is the corner radius; half the size of the item makes the shadow round.
 */
class SoftShadow : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY artChanged FINAL)
    Q_PROPERTY(double spread READ spread WRITE setSpread NOTIFY artChanged FINAL)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY artChanged FINAL)

public:
    using PaintedItem::PaintedItem;

    QColor color() const { return m_color; }
    void setColor(QColor color) { setInput(m_color, color); }
    double spread() const { return m_spread; }
    void setSpread(double spread) { setInput(m_spread, spread); }
    double radius() const { return m_radius; }
    void setRadius(double radius) { setInput(m_radius, radius); }

    void paint(QPainter& painter, const QSizeF& size) const override;
    qreal bleed() const override { return m_spread; }
    QString cacheKey() const override;
    bool isSoft() const override { return true; }

private:
    QColor m_color = Qt::black;
    double m_spread = 0;
    double m_radius = 0;
};

} // namespace quillmere
