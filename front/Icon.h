#pragma once

#include "PaintedItem.h"

#include <QColor>

namespace quillmere {

/** A small square icon, drawn in one colour. It fills the item. */
class Icon : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::Icon::Name name READ name WRITE setName NOTIFY artChanged FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY artChanged FINAL)

public:
    enum Name {
        None,
        MagnifyingGlass,
        Play,        ///< a triangle
        StartOver,   ///< a circular arrow, anticlockwise
        TextLines,   ///< lines of text, aligned left
        Pause,       ///< two upright bars
        FastForward, ///< two triangles side by side that point right
        Rewind,      ///< mirror image of FastForward
    };
    Q_ENUM(Name)

    using PaintedItem::PaintedItem;

    Name name() const { return m_name; }
    void setName(Name name) { setInput(m_name, name); }
    QColor color() const { return m_color; }
    void setColor(QColor color) { setInput(m_color, color); }

    void paint(QPainter& painter, const QSizeF& size) const override;

private:
    Name m_name = None;
    QColor m_color = Qt::black;
};

} // namespace quillmere
