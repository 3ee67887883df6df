#include "TextLines.h"

#include "Graphemes.h"
#include "Typography.h"

#include <QFontMetricsF>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Of a line that was measured alone; among others it is hardly ever as wide to the last fraction.
constexpr double tolerance = 0.1;

constexpr QChar emojiSelector(0xFE0F);
constexpr QChar joiner(0x200D);

QTextCharFormat emojiFormat()
{
    QTextCharFormat format;
    format.setFontFamilies(Typography::emojiFamilies());
    return format;
}

/** Whether the letters before and after `place` are written as one stroke. */
bool joins(const QString& text, qsizetype place)
{
    const auto type = [&text](qsizetype at) { return text.at(at).joiningType(); };
    const auto before = type(place - 1);
    const auto after = type(place);
    return (before == QChar::Joining_Dual || before == QChar::Joining_Causing) &&
           (after == QChar::Joining_Dual || after == QChar::Joining_Right || after == QChar::Joining_Causing);
}

} // namespace

TextLines::Letters TextLines::lettersOf(const QString& text)
{
    Letters letters;
    const auto emoji = Graphemes::emoji(text);
    // One of its own, as a format computes its font when it is first asked, which is not safe between threads.
    const QTextCharFormat format = emoji.isEmpty() ? QTextCharFormat() : emojiFormat();
    qsizetype end = 0;
    for (const auto& [start, length] : emoji) {
        letters.text += QStringView(text).sliced(end, start - end);
        end = start + length;
        // The emoji font has no selector, and another font's would split the sign.
        const QString sign = text.sliced(start, length).remove(emojiSelector);
        letters.formats.append({int(letters.text.size()), int(sign.size()), format});
        letters.text += sign;
    }
    letters.text += QStringView(text).sliced(end);
    return letters;
}

TextLines::TextLines(const QString& text, const QFont& font)
    : m_whole(lettersOf(text)), m_font(font), m_direction(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight)
{
    const QFontMetricsF metrics(font);
    m_ascent = metrics.ascent();
    m_descent = metrics.descent();
    show(m_whole);
}

void TextLines::show(const Letters& letters)
{
    m_shown = letters;
    m_layout = std::make_unique<QTextLayout>(letters.text, m_font);
    m_layout->setFormats(letters.formats);
}

bool TextLines::breakLines(double width, QTextOption::WrapMode wrap, int atMost)
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(m_direction);
    option.setWrapMode(wrap);
    m_layout->setTextOption(option);
    m_layout->beginLayout();
    int end = 0;
    for (int i = 0; i < atMost && end < m_shown.text.size(); ++i) {
        QTextLine line = m_layout->createLine();
        line.setLineWidth(width);
        line.setPosition({0, i * height() + m_ascent - line.ascent()});
        end = line.textStart() + line.textLength();
    }
    m_layout->endLayout();
    return end >= m_shown.text.size();
}

bool TextLines::elide(double width, int atMost)
{
    if (m_shown.text != m_whole.text)
        show(m_whole);
    if (breakLines(width, QTextOption::WrapAtWordBoundaryOrAnywhere, atMost))
        return false;
    const qsizetype start = m_layout->lineAt(m_layout->lineCount() - 1).textStart();
    Letters last = cut(start, endOnOneLine(start, width));
    Letters letters{m_whole.text.first(start), m_whole.formats};
    letters.formats.removeIf([start](const auto& range) { return range.start >= start; });
    // The separator keeps a last line that has become shorter from moving up.
    if (start > 0 && letters.text.back() != QChar::LineSeparator)
        letters.text += QChar::LineSeparator;
    for (QTextLayout::FormatRange& range : last.formats)
        range.start += int(letters.text.size());
    letters.text += last.text;
    letters.formats += last.formats;
    show(letters);
    breakLines(width, QTextOption::WrapAtWordBoundaryOrAnywhere, atMost);
    return true;
}

/** A stretch of the text, with an ellipsis for what is behind it. */
TextLines::Letters TextLines::cut(qsizetype start, qsizetype end) const
{
    Letters cut{m_whole.text.sliced(start, end - start), m_whole.formats};
    cut.formats.removeIf([&](const auto& range) { return range.start < start || range.start + range.length > end; });
    for (QTextLayout::FormatRange& range : cut.formats)
        range.start -= int(start);
    if (cut.text.endsWith(QChar::LineSeparator))
        cut.text.chop(1);
    else if (end > start && end < m_whole.text.size() && joins(m_whole.text, end))
        cut.text += joiner;
    cut.text += u'…';
    return cut;
}

/** Where the last line's text, which begins at `start`, is cut so that it has room with an ellipsis behind it. */
qsizetype TextLines::endOnOneLine(qsizetype start, double width) const
{
    Letters rest = m_whole;
    rest.text.remove(0, start);
    rest.formats.removeIf([start](const auto& range) { return range.start < start; });
    for (QTextLayout::FormatRange& range : rest.formats)
        range.start -= int(start);
    QTextLayout layout;
    const int most = oneLine(layout, rest, width).textLength();
    const auto isInsideOneSign = [&rest](int place) {
        return std::any_of(rest.formats.begin(), rest.formats.end(), [place](const auto& range) {
            return place > range.start && place < range.start + range.length;
        });
    };
    QList<qsizetype> ends{start};
    for (int place = 1; place <= most; ++place) {
        if (layout.isValidCursorPosition(place) && !isInsideOneSign(place))
            ends.append(start + place);
    }
    const auto fits = [&](qsizetype end) {
        QTextLayout probe;
        return oneLine(probe, cut(start, end), unbounded).naturalTextWidth() <= width - tolerance;
    };
    return *(std::partition_point(ends.begin() + 1, ends.end(), fits) - 1);
}

/** The first line of `layout`, on which the letters are laid, as many as have room. */
QTextLine TextLines::oneLine(QTextLayout& layout, const Letters& letters, double width) const
{
    QTextOption option;
    option.setTextDirection(m_direction);
    option.setWrapMode(QTextOption::WrapAnywhere);
    layout.setText(letters.text);
    layout.setFont(m_font);
    layout.setFormats(letters.formats);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(width);
    layout.endLayout();
    return line;
}

double TextLines::widest() const
{
    double widest = 0;
    for (int i = 0; i < m_layout->lineCount(); ++i)
        widest = std::max(widest, m_layout->lineAt(i).naturalTextWidth());
    return widest;
}

void TextLines::draw(QPainter& painter) const
{
    m_layout->draw(&painter, QPointF());
}
