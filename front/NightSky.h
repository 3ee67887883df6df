#pragma once

#include "PaintedItem.h"

namespace quillmere {

/** Background of the front screen: a vertical gradient from ink navy to a darker navy at the bottom. */
class NightSky : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    using PaintedItem::PaintedItem;

    void paint(QPainter& painter, const QSizeF& size) const override;
    bool hasUniformRows() const override { return true; }
};

} // namespace quillmere
