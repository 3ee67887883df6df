#pragma once

#include "TextLines.h"

#include <QColor>
#include <QPointF>
#include <QSizeF>

namespace quillmere {

/**
 * A text laid out to fit a given area: at its font's size if possible, else scaled down, at most to `minScale`, and
 * elided if it still does not fit. Line breaks and control characters count as spaces. Lengths are in the units of the
 * font's size, before the painter's scale. A value; used only on the thread that created it.
 */
class FittedText
{
public:
    /** Longer texts are cut here, in UTF-16 units; more than fits at the smallest scale. */
    static constexpr qsizetype maxLength = 600;

    /** On one line of at most `width`. */
    static FittedText line(const QString& text, const QFont& font, double width, double minScale);

    /** On as many lines as fit the height of `area`. If the text does not fit at `minScale`, it breaks words too. */
    static FittedText block(const QString& text, const QFont& font, QSizeF area, double minScale);

    /** The factor by which the font is scaled down; 1 for its full size. */
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
    bool fits(double scale, QSizeF area);
    void elide(double width, int maxLines);

    TextLines m_lines;
    double m_scale = 1;
    bool m_elided = false;
};

} // namespace quillmere
