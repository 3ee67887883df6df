#pragma once

#include "PaintedItem.h"

/** The station's night sky, the ground of the front screen: ink navy darkening to the foot. */
class NightSky : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    using PaintedItem::PaintedItem;

    void paint(QPainter& painter, const QSizeF& size) const override;
    bool hasUniformRows() const override { return true; }
};
