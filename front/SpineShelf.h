#pragma once

#include "PaintedItem.h"

namespace quillmere {

/** Picture on the store door: a strip with eight miniature cassette spines that stand on a bright edge. */
class SpineShelf : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    static constexpr double height = 190; ///< points

    explicit SpineShelf(QQuickItem* parent = nullptr);

    void paint(QPainter& painter, const QSizeF& size) const override;
};

} // namespace quillmere
