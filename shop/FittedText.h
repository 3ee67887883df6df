#pragma once

#include "TextLines.h"

#include <QColor>
#include <QPointF>
#include <QSizeF>

/**
 * A text laid out for the room that it has: at its font's size if it fits, else smaller, down to a given share of that
 * size, and elided beyond. Line breaks and control characters count as a space. Lengths are in the units of the font's
 * size, whatever the painter's scale. A value, to be used up on the thread that made it.
 */
class FittedText
{
public:
    /** What can be read of a text, in UTF-16 units: more than the smallest type has room for. */
    static constexpr qsizetype longest = 600;

    /** On one line of at most `width`. */
    static FittedText line(const QString& text, const QFont& font, double width, double least);

    /** On as many lines as `room` has height for; a word is only broken where shrinking does not keep it whole. */
    static FittedText block(const QString& text, const QFont& font, QSizeF room, double least);

    /** The share of the font's size at which it is set. */
    double scale() const { return m_scale; }
    bool isElided() const { return m_elided; }
    int lineCount() const { return m_lines.count(); }
    double width() const;
    double height() const;
    double ascent() const; ///< from the top to the first baseline

    void paint(QPainter& painter, QPointF topLeft, const QColor& color) const;

private:
    FittedText(const QString& text, const QFont& font);
    int linesIn(double height) const;
    bool fits(double scale, QSizeF room);
    void elide(double width, int atMost);

    TextLines m_lines;
    double m_scale = 1;
    bool m_elided = false;
};
