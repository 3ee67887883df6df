#pragma once

#include "PaintedItem.h"

#include <QLinearGradient>

namespace quillmere {

/** Walnut veneer that fills the item. The grain is pseudo-random, but the same on every run and every screen. */
class VeneerBackground : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    /** One dark vertical streak of the grain. */
    struct Streak
    {
        double x;     ///< points from the left edge
        double width; ///< points
        double opacity;
    };

    using PaintedItem::PaintedItem;

    void paint(QPainter& painter, const QSizeF& size) const override;
    QString cacheKey() const override { return QStringLiteral("veneer"); }

    /** Gradient of the wood colours for a surface of this size. */
    static QLinearGradient wood(const QSizeF& size);

    /** Grain of a surface `width` points wide, from left to right. */
    static QList<Streak> grain(double width);
};

} // namespace quillmere
