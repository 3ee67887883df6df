#pragma once

#include "PaintedItem.h"

#include <QColor>

/** The test picture of a dark tower: `bars` upright, a band of them in reverse order, and a foot of six dark and bright cells. */
class ColorBars : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /** Left to right; equally wide. */
    Q_PROPERTY(QList<QColor> bars READ bars WRITE setBars NOTIFY artChanged FINAL)

public:
    using PaintedItem::PaintedItem;

    const QList<QColor>& bars() const { return m_bars; }
    void setBars(const QList<QColor>& bars);

    void paint(QPainter& painter, const QSizeF& size) const override;

private:
    QList<QColor> m_bars;
};
