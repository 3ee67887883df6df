#pragma once

#include "PaintedItem.h"

#include <QColor>

/** A shade over a picture that deepens from nothing at its top to `color` towards its bottom, for texts to be read on. */
class Scrim : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY artChanged FINAL)

public:
    using PaintedItem::PaintedItem;

    QColor color() const { return m_color; }
    void setColor(QColor color);

    bool hasUniformRows() const override { return true; }
    void paint(QPainter& painter, const QSizeF& size) const override;

private:
    QColor m_color = Qt::black;
};
