#pragma once

#include "PaintedItem.h"

#include <QColor>

namespace quillmere {

/** Gradient over a picture, from transparent at the top to `color` at the bottom, which keeps texts on it readable. */
class Scrim : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY artChanged FINAL)

public:
    using PaintedItem::PaintedItem;

    QColor color() const { return m_color; }
    void setColor(QColor color) { setInput(m_color, color); }

    bool hasUniformRows() const override { return true; }
    void paint(QPainter& painter, const QSizeF& size) const override;

private:
    QColor m_color = Qt::black;
};

} // namespace quillmere
