#pragma once

#include "PaintedItem.h"

/** The shop door's shelf of miniature cassette spines: a strip with its eight spines standing on a lit edge. */
class SpineShelf : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    static constexpr double height = 190; ///< points

    explicit SpineShelf(QQuickItem* parent = nullptr);

    void paint(QPainter& painter, const QSizeF& size) const override;
};
