#pragma once

#include "PaintedItem.h"

#include <QColor>

namespace quillmere {

/** A background with a linear gradient from the top left corner (`from`) to the bottom right corner (`to`). */
class DiagonalGradient : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor from READ from WRITE setFrom NOTIFY artChanged FINAL)
    Q_PROPERTY(QColor to READ to WRITE setTo NOTIFY artChanged FINAL)

public:
    using PaintedItem::PaintedItem;

    QColor from() const { return m_from; }
    void setFrom(QColor from) { setInput(m_from, from); }
    QColor to() const { return m_to; }
    void setTo(QColor to) { setInput(m_to, to); }

    void paint(QPainter& painter, const QSizeF& size) const override;

private:
    QColor m_from;
    QColor m_to;
};

} // namespace quillmere
