#pragma once

#include "PaintedItem.h"

#include <QColor>

/** A small square sign beside or instead of a word, drawn in one colour to fill the item. */
class Icon : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Icon::Name name READ name WRITE setName NOTIFY artChanged FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY artChanged FINAL)

public:
    enum Name {
        None,
        MagnifyingGlass,
        Play,        ///< a triangle
        StartOver,   ///< an arrow that circles anticlockwise
        TextLines,   ///< lines of text, aligned left
        Pause,       ///< two upright bars
        FastForward, ///< two triangles one behind the other
        Rewind,      ///< the same, the other way
    };
    Q_ENUM(Name)

    using PaintedItem::PaintedItem;

    Name name() const { return m_name; }
    void setName(Name name);
    QColor color() const { return m_color; }
    void setColor(QColor color);

    void paint(QPainter& painter, const QSizeF& size) const override;

private:
    Name m_name = None;
    QColor m_color = Qt::black;
};
