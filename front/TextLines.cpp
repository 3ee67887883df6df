#include "TextLines.h"

#include "Graphemes.h"
#include "Typography.h"

#include <QFontMetricsF>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

// A line measured on its own can differ from the same line within the text by a fraction of a unit.
constexpr double tolerance = 0.1;

constexpr QChar emojiSelector(0xFE0F);
constexpr QChar joiner(0x200D);

QTextCharFormat emojiFormat()
{
    QTextCharFormat format;
    format.setFontFamilies(Typography::emojiFamilies());
    return format;
}

/** Whether the letters before and after `index` are joined in cursive writing, as in Arabic. */
bool isJoinedAt(const QString& text, qsizetype index)
{
    const auto type = [&text](qsizetype at) { return text.at(at).joiningType(); };
    const auto before = type(index - 1);
    const auto after = type(index);
    return (before == QChar::Joining_Dual || before == QChar::Joining_Causing) &&
           (after == QChar::Joining_Dual || after == QChar::Joining_Right || after == QChar::Joining_Causing);
}

} // namespace

TextLines::FormattedText TextLines::withEmojiFont(const QString& text)
{
    FormattedText formatted;
    const auto emoji = Graphemes::emoji(text);
    // A new format for each call: QTextFormat computes its font lazily, so sharing one between threads is not safe.
    const QTextCharFormat format = emoji.isEmpty() ? QTextCharFormat() : emojiFormat();
    qsizetype end = 0;
    for (const auto& [start, length] : emoji) {
        formatted.text += QStringView(text).sliced(end, start - end);
        end = start + length;
        // The emoji font has no glyph for the variation selector. A glyph of another font would split the emoji.
        const QString emojiText = text.sliced(start, length).remove(emojiSelector);
        formatted.formats.append({int(formatted.text.size()), int(emojiText.size()), format});
        formatted.text += emojiText;
    }
    formatted.text += QStringView(text).sliced(end);
    return formatted;
}

TextLines::TextLines(const QString& text, const QFont& font)
    : m_whole(withEmojiFont(text)), m_font(font), m_direction(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight)
{
    const QFontMetricsF metrics(font);
    m_ascent = metrics.ascent();
    m_descent = metrics.descent();
    layOutText(m_whole);
}

void TextLines::layOutText(const FormattedText& formatted)
{
    m_laidOut = formatted;
    m_layout = std::make_unique<QTextLayout>(formatted.text, m_font);
    m_layout->setFormats(formatted.formats);
}

bool TextLines::breakLines(double width, QTextOption::WrapMode wrap, int maximumLines)
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(m_direction);
    option.setWrapMode(wrap);
    m_layout->setTextOption(option);
    m_layout->beginLayout();
    int end = 0;
    for (int i = 0; i < maximumLines && end < m_laidOut.text.size(); ++i) {
        QTextLine line = m_layout->createLine();
        line.setLineWidth(width);
        line.setPosition({0, i * height() + m_ascent - line.ascent()});
        end = line.textStart() + line.textLength();
    }
    m_layout->endLayout();
    return end >= m_laidOut.text.size();
}

bool TextLines::elide(double width, int maximumLines)
{
    if (m_laidOut.text != m_whole.text)
        layOutText(m_whole);
    if (breakLines(width, QTextOption::WrapAtWordBoundaryOrAnywhere, maximumLines))
        return false;
    const qsizetype start = m_layout->lineAt(m_layout->lineCount() - 1).textStart();
    FormattedText last = elidedText(start, elisionPoint(start, width));
    FormattedText formatted{m_whole.text.first(start), m_whole.formats};
    formatted.formats.removeIf([start](const auto& range) { return range.start >= start; });
    // The separator keeps the shortened last line from fitting on the line above.
    if (start > 0 && formatted.text.back() != QChar::LineSeparator)
        formatted.text += QChar::LineSeparator;
    for (QTextLayout::FormatRange& range : last.formats)
        range.start += int(formatted.text.size());
    formatted.text += last.text;
    formatted.formats += last.formats;
    layOutText(formatted);
    breakLines(width, QTextOption::WrapAtWordBoundaryOrAnywhere, maximumLines);
    return true;
}

/** The text from `start` to `end`, followed by an ellipsis. */
TextLines::FormattedText TextLines::elidedText(qsizetype start, qsizetype end) const
{
    FormattedText elided{m_whole.text.sliced(start, end - start), m_whole.formats};
    elided.formats.removeIf([&](const auto& range) { return range.start < start || range.start + range.length > end; });
    for (QTextLayout::FormatRange& range : elided.formats)
        range.start -= int(start);
    if (elided.text.endsWith(QChar::LineSeparator))
        elided.text.chop(1);
    else if (end > start && end < m_whole.text.size() && isJoinedAt(m_whole.text, end))
        elided.text += joiner;
    elided.text += u'…';
    return elided;
}

/** Largest index at which the last line, which begins at `start`, can be cut so that it fits with its ellipsis. */
qsizetype TextLines::elisionPoint(qsizetype start, double width) const
{
    FormattedText rest = m_whole;
    rest.text.remove(0, start);
    rest.formats.removeIf([start](const auto& range) { return range.start < start; });
    for (QTextLayout::FormatRange& range : rest.formats)
        range.start -= int(start);
    QTextLayout layout;
    const int lastIndex = layOutOneLine(layout, rest, width).textLength();
    const auto isInsideEmoji = [&rest](int index) {
        return std::any_of(rest.formats.begin(), rest.formats.end(), [index](const auto& range) {
            return index > range.start && index < range.start + range.length;
        });
    };
    QList<qsizetype> ends{start};
    for (int index = 1; index <= lastIndex; ++index) {
        if (layout.isValidCursorPosition(index) && !isInsideEmoji(index))
            ends.append(start + index);
    }
    const auto fits = [&](qsizetype end) {
        QTextLayout probe;
        return layOutOneLine(probe, elidedText(start, end), unbounded).naturalTextWidth() <= width - tolerance;
    };
    return *(std::partition_point(ends.begin() + 1, ends.end(), fits) - 1);
}

/** Lays out as much of `formatted` as fits on one line of `width`, and returns that line of `layout`. */
QTextLine TextLines::layOutOneLine(QTextLayout& layout, const FormattedText& formatted, double width) const
{
    QTextOption option;
    option.setTextDirection(m_direction);
    option.setWrapMode(QTextOption::WrapAnywhere);
    layout.setText(formatted.text);
    layout.setFont(m_font);
    layout.setFormats(formatted.formats);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(width);
    layout.endLayout();
    return line;
}

double TextLines::maximumLineWidth() const
{
    double maximum = 0;
    for (int i = 0; i < m_layout->lineCount(); ++i)
        maximum = std::max(maximum, m_layout->lineAt(i).naturalTextWidth());
    return maximum;
}

void TextLines::draw(QPainter& painter) const
{
    m_layout->draw(&painter, QPointF());
}

} // namespace quillmere
