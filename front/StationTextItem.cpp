#include "StationTextItem.h"

#include <QMetaMethod>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double tolerance = 0.01;

/** Where the letters of a text document stand on lines of a fixed height: four fifths down, in 64ths of a point. */
double documentBaseline(double lineHeight)
{
    return std::floor(std::floor(lineHeight * 64) * 4 / 5) / 64;
}

/** `text` with each of its line breaks as `separator`, in one block of a document. */
QString withBreaks(QString text, QChar separator)
{
    static const QRegularExpression breaks(u"\\r\\n|[\\n-\\r\\x{85}\\x{2028}\\x{2029}]"_s);
    // The two that a document takes for the ends of a frame are no characters.
    return text.remove(QChar(0xFDD0)).remove(QChar(0xFDD1)).replace(breaks, separator);
}

} // namespace

void StationTextItem::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
    startAnew();
}

void StationTextItem::setFont(const QFont& font)
{
    if (m_font == font)
        return;
    m_font = font;
    Q_EMIT fontChanged();
    startAnew();
}

void StationTextItem::setWraps(bool wraps)
{
    if (m_wraps == wraps)
        return;
    m_wraps = wraps;
    Q_EMIT wrapsChanged();
    startAnew();
}

void StationTextItem::setMaximumLineCount(int count)
{
    if (m_maximumLineCount == count)
        return;
    m_maximumLineCount = count;
    Q_EMIT maximumLineCountChanged();
    layOut();
}

void StationTextItem::setMaximumHeight(double height)
{
    if (m_maximumHeight == height)
        return;
    m_maximumHeight = height;
    Q_EMIT maximumHeightChanged();
    layOut();
}

void StationTextItem::setHorizontalAlignment(int alignment)
{
    if (m_horizontalAlignment == alignment)
        return;
    m_horizontalAlignment = alignment;
    Q_EMIT horizontalAlignmentChanged();
    layOut();
}

void StationTextItem::setVerticalAlignment(int alignment)
{
    if (m_verticalAlignment == alignment)
        return;
    m_verticalAlignment = alignment;
    Q_EMIT verticalAlignmentChanged();
    layOut();
}

void StationTextItem::setLineSpacing(double spacing)
{
    if (m_lineSpacing == spacing)
        return;
    m_lineSpacing = spacing;
    Q_EMIT lineSpacingChanged();
    layOut();
}

void StationTextItem::setTopPadding(double padding)
{
    if (m_topPadding == padding)
        return;
    m_topPadding = padding;
    Q_EMIT topPaddingChanged();
    layOut();
}

void StationTextItem::setDocument(QQuickTextDocument* document)
{
    if (m_document == document)
        return;
    m_document = document;
    if (document)
        document->textDocument()->setUndoRedoEnabled(false);
    Q_EMIT documentChanged();
    layOut();
}

double StationTextItem::contentHeight() const
{
    return m_lineCount * (lineHeight() + m_lineSpacing) - m_lineSpacing;
}

void StationTextItem::componentComplete()
{
    QQuickItem::componentComplete();
    layOut();
}

void StationTextItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    // Sizes that nobody set come from the layout itself.
    if ((widthValid() && newGeometry.width() != oldGeometry.width()) ||
        (heightValid() && newGeometry.height() != oldGeometry.height()))
        layOut();
}

/** Whole points, as those of every text item of the toolkit. */
double StationTextItem::lineHeight() const
{
    return m_lines ? std::ceil(m_lines->height() - tolerance) : 0;
}

double StationTextItem::room() const
{
    return heightValid() ? std::min(height(), m_maximumHeight) : m_maximumHeight;
}

int StationTextItem::linesThatHaveRoom() const
{
    if (!m_wraps)
        return 1;
    const double most = m_maximumLineCount > 0 ? m_maximumLineCount : std::numeric_limits<int>::max();
    const double lines = (room() - m_topPadding + m_lineSpacing + tolerance) / (lineHeight() + m_lineSpacing);
    return int(std::max(1.0, std::min(most, lines)));
}

Qt::Alignment StationTextItem::alignment() const
{
    if (m_horizontalAlignment != 0)
        return Qt::Alignment(m_horizontalAlignment);
    return m_lines->direction() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
}

/** What is laid out now is of another text. */
void StationTextItem::startAnew()
{
    m_lines.reset();
    m_naturalWidth = -1;
    layOut();
}

void StationTextItem::layOut()
{
    if (!isComponentComplete())
        return;
    if (!m_lines)
        m_lines = std::make_unique<TextLines>(withBreaks(m_text, m_wraps ? QChar(QChar::LineSeparator) : u' '), m_font);
    // A change of the implicit size may resize the item, and so call this again before the first call goes on.
    const int pass = ++m_pass;
    static const QMetaMethod implicitWidth = QMetaMethod::fromSignal(&QQuickItem::implicitWidthChanged);
    if (!isEndless() || isSignalConnected(implicitWidth))
        setImplicitWidth(naturalWidth());
    if (pass == m_pass)
        isEndless() ? letDocumentBreakLines() : breakLines();
    if (pass == m_pass)
        setImplicitHeight(m_topPadding + contentHeight());
    if (pass == m_pass)
        showLines();
}

/** Whether it is as long as it likes: then the document alone lays it out. */
bool StationTextItem::isEndless() const
{
    return m_document && m_wraps && m_maximumLineCount == 0 && widthValid() && std::isinf(room());
}

void StationTextItem::letDocumentBreakLines()
{
    fillDocument();
    const QTextDocument* document = m_document->textDocument();
    m_isTruncated = false;
    m_lineCount = std::max(1, document->firstBlock().layout()->lineCount());
    m_contentWidth = document->idealWidth();
}

double StationTextItem::naturalWidth()
{
    if (m_naturalWidth < 0) {
        m_lines->breakLines(TextLines::unbounded, QTextOption::NoWrap, std::numeric_limits<int>::max());
        m_naturalWidth = m_lines->widest();
        m_isTruncated = false;
    }
    return m_naturalWidth;
}

void StationTextItem::breakLines()
{
    const bool mustBreak = widthValid() && (m_wraps || m_naturalWidth > width() + tolerance);
    // One line that has room is laid out already.
    if (mustBreak || m_wraps || m_isTruncated)
        m_isTruncated = m_lines->elide(mustBreak ? width() : TextLines::unbounded, linesThatHaveRoom());
    m_lineCount = std::max(1, m_lines->count());
    m_contentWidth = m_lines->widest();
}

/** Says where the lines are, and has them drawn. */
void StationTextItem::showLines()
{
    const double free = height() - m_topPadding - contentHeight();
    const double top = m_topPadding + (m_verticalAlignment & Qt::AlignVCenter  ? free / 2
                                       : m_verticalAlignment & Qt::AlignBottom ? free
                                                                               : 0);
    const double baseline = top + m_lines->ascent();
    setBaselineOffset(baseline);
    m_documentTop = baseline - documentBaseline(lineHeight() + m_lineSpacing);
    Q_EMIT laidOut();
    if (m_document)
        fillDocument();
}

void StationTextItem::fillDocument()
{
    QTextBlockFormat block;
    block.setLineHeight(lineHeight() + m_lineSpacing, QTextBlockFormat::FixedHeight);
    block.setAlignment(alignment() | Qt::AlignAbsolute);
    block.setLayoutDirection(m_lines->direction());
    QTextCursor cursor(m_document->textDocument());
    if (m_drawn == m_lines->letters() && cursor.blockFormat() == block)
        return;
    m_drawn = m_lines->letters();
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.insertText(m_drawn.text, {});
    cursor.setBlockFormat(block);
    for (const QTextLayout::FormatRange& range : std::as_const(m_drawn.formats)) {
        cursor.setPosition(range.start);
        cursor.setPosition(range.start + range.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(range.format);
    }
    cursor.endEditBlock();
}
