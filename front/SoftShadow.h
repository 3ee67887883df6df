#pragma once

#include "PaintedItem.h"

#include <QColor>

/**
 * The soft shadow of a plate as large as the item, or the glow of a round lamp: painted once, shown, faded and scaled
 * as a picture, which equal shadows share. `spread` is the distance in points at which it has faded out; a `radius` of
 * half the size makes it round.
 */
class SoftShadow : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY artChanged FINAL)
    Q_PROPERTY(double spread READ spread WRITE setSpread NOTIFY artChanged FINAL)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY artChanged FINAL)

public:
    using PaintedItem::PaintedItem;

    QColor color() const { return m_color; }
    void setColor(QColor color);
    double spread() const { return m_spread; }
    void setSpread(double spread);
    double radius() const { return m_radius; }
    void setRadius(double radius);

    void paint(QPainter& painter, const QSizeF& size) const override;
    qreal bleed() const override { return m_spread; }
    QString look() const override;
    bool isSoft() const override { return true; }

private:
    QColor m_color = Qt::black;
    double m_spread = 0;
    double m_radius = 0;
};
