#pragma once

#include <QFont>
#include <QList>
#include <QString>
#include <QTextLayout>

#include <memory>

class QPainter;

/**
 * A text on lines that are all as tall as its own font's, with its letters on them, whatever other fonts these are from;
 * an emoji is one sign of the emoji font. Lengths are in the units of the font's size. A value, to be used up on the
 * thread that made it.
 */
class TextLines
{
public:
    /** A text, and what in it is not in its own font. */
    struct Letters
    {
        QString text;
        QList<QTextLayout::FormatRange> formats;

        bool operator==(const Letters&) const = default;
    };

    /** Wider than any text is. */
    static constexpr double unbounded = 1e6;

    /** A text on the fonts that show every emoji as one sign. */
    static Letters lettersOf(const QString& text);

    /** U+2028 begins a new line; there are no other line breaks in `text`. */
    TextLines(const QString& text, const QFont& font);

    double ascent() const { return m_ascent; } ///< of every line
    double height() const { return m_ascent + m_descent; }
    Qt::LayoutDirection direction() const { return m_direction; }

    /** Breaks the text into lines of `width`. Whether the whole of it found a place on `atMost` lines. */
    bool breakLines(double width, QTextOption::WrapMode wrap, int atMost);
    /** The same with words broken where they must be, and what finds no place cut off. Whether something was. */
    bool elide(double width, int atMost);

    int count() const { return int(m_layout->lineCount()); }
    double widest() const;

    /** What is laid out: cut where it was, and without the selectors that are no signs themselves. */
    const Letters& letters() const { return m_shown; }

    void draw(QPainter& painter) const;

private:
    void show(const Letters& letters);
    Letters cut(qsizetype start, qsizetype end) const;
    qsizetype endOnOneLine(qsizetype start, double width) const;
    QTextLine oneLine(QTextLayout& layout, const Letters& letters, double width) const;

    Letters m_whole;
    Letters m_shown; ///< what is laid out of it
    QFont m_font;
    double m_ascent;
    double m_descent;
    Qt::LayoutDirection m_direction;
    std::unique_ptr<QTextLayout> m_layout;
};
