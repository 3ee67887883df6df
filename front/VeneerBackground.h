#pragma once

#include "PaintedItem.h"

#include <QLinearGradient>

/** Walnut veneer that fills its item; its grain is the same on every run and on every screen. */
class VeneerBackground : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    /** One streak of the grain. */
    struct Streak
    {
        double x;     ///< points from the leading edge
        double width; ///< points
        double opacity;
    };

    using PaintedItem::PaintedItem;

    void paint(QPainter& painter, const QSizeF& size) const override;
    QString look() const override { return QStringLiteral("veneer"); }

    /** The colours across a surface of this size. */
    static QLinearGradient wood(const QSizeF& size);

    /** The grain of a surface `width` points wide, from the leading edge on. */
    static QList<Streak> grain(double width);
};
