#pragma once

#include "PaintedItem.h"

#include <QColor>

namespace quillmere {

/** Vertical stripes of equal width, one for each colour, that fill the item. */
class MiniColorBars : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<QColor> bars READ bars WRITE setBars NOTIFY artChanged FINAL)

public:
    using PaintedItem::PaintedItem;

    const QList<QColor>& bars() const { return m_bars; }
    void setBars(const QList<QColor>& bars) { setInput(m_bars, bars); }

    void paint(QPainter& painter, const QSizeF& size) const override;

private:
    QList<QColor> m_bars;
};

} // namespace quillmere
