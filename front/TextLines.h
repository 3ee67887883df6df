#pragma once

#include <QFont>
#include <QList>
#include <QString>
#include <QTextLayout>

#include <memory>

class QPainter;

namespace quillmere {

/**
 * Text layout with equal line heights: each line has the height of the given font, also with glyphs of fallback fonts.
 * Each emoji is drawn in the emoji font. Lengths are in the unit of the font's pixel size. Use an object only on the
 * thread that created it.
 */
class TextLines
{
public:
    /** A text, and the formats of the ranges that use the emoji font. */
    struct FormattedText
    {
        QString text;
        QList<QTextLayout::FormatRange> formats;

        bool operator==(const FormattedText&) const = default;
    };

    /** Line width that does not limit any text. */
    static constexpr double unbounded = 1e6;

    /** Returns `text` with each emoji formatted in the emoji font, and without the variation selectors of emoji. */
    static FormattedText withEmojiFont(const QString& text);

    /** `text` must contain no line break other than U+2028; callers replace the others. */
    TextLines(const QString& text, const QFont& font);

    double ascent() const { return m_ascent; } ///< of every line
    double height() const { return m_ascent + m_descent; }
    Qt::LayoutDirection direction() const { return m_direction; }

    /** Breaks the text into at most `maximumLines` lines of `width`. Returns whether all of the text fits. */
    bool breakLines(double width, QTextOption::WrapMode wrap, int maximumLines);
    /** Same, but breaks long words and elides text that does not fit. Returns whether it elided any. */
    bool elide(double width, int maximumLines);

    int count() const { return int(m_layout->lineCount()); }
    double maximumLineWidth() const; ///< natural width of the widest line

    /** The text as laid out: elided if necessary, and without the variation selectors of emoji. */
    const FormattedText& laidOutText() const { return m_laidOut; }

    void draw(QPainter& painter) const;

private:
    void layOutText(const FormattedText& formatted);
    FormattedText elidedText(qsizetype start, qsizetype end) const;
    qsizetype elisionPoint(qsizetype start, double width) const;
    QTextLine layOutOneLine(QTextLayout& layout, const FormattedText& formatted, double width) const;

    FormattedText m_whole;
    FormattedText m_laidOut; ///< m_whole, elided if necessary
    QFont m_font;
    double m_ascent;
    double m_descent;
    Qt::LayoutDirection m_direction;
    std::unique_ptr<QTextLayout> m_layout;
};

} // namespace quillmere
