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

namespace quillmere {

namespace {

constexpr double tolerance = 0.01;

/** Baseline of a QTextDocument line of fixed height: 4/5 of the height, rounded down to 1/64 of a point. */
double documentBaseline(double lineHeight)
{
    return std::floor(std::floor(lineHeight * 64) * 4 / 5) / 64;
}

/** `text` with each line break replaced by `separator`, so that a QTextDocument keeps it in one block. */
QString withLineBreaks(QString text, QChar separator)
{
    static const QRegularExpression breaks(u"\\r\\n|[\\n-\\r\\x{85}\\x{2028}\\x{2029}]"_s);
    // QTextDocument uses these two noncharacters as frame delimiters.
    return text.remove(QChar(0xFDD0)).remove(QChar(0xFDD1)).replace(breaks, separator);
}

} // namespace

void StationTextItem::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
    resetLayout();
}

void StationTextItem::setFont(const QFont& font)
{
    if (m_font == font)
        return;
    m_font = font;
    Q_EMIT fontChanged();
    resetLayout();
}

void StationTextItem::setWraps(bool wraps)
{
    if (m_wraps == wraps)
        return;
    m_wraps = wraps;
    Q_EMIT wrapsChanged();
    resetLayout();
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
    // A size that is not set explicitly is the implicit size, which the layout itself computes.
    if ((widthValid() && newGeometry.width() != oldGeometry.width()) ||
        (heightValid() && newGeometry.height() != oldGeometry.height()))
        layOut();
}

/** Rounded up to whole points, like the line heights of Qt Quick's text items. */
double StationTextItem::lineHeight() const
{
    return m_lines ? std::ceil(m_lines->height() - tolerance) : 0;
}

double StationTextItem::availableHeight() const
{
    return heightValid() ? std::min(height(), m_maximumHeight) : m_maximumHeight;
}

int StationTextItem::maximumVisibleLines() const
{
    if (!m_wraps)
        return 1;
    const double maximum = m_maximumLineCount > 0 ? m_maximumLineCount : std::numeric_limits<int>::max();
    const double lines =
        (availableHeight() - m_topPadding + m_lineSpacing + tolerance) / (lineHeight() + m_lineSpacing);
    return int(std::max(1.0, std::min(maximum, lines)));
}

Qt::Alignment StationTextItem::alignment() const
{
    if (m_horizontalAlignment != 0)
        return Qt::Alignment(m_horizontalAlignment);
    return m_lines->direction() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
}

/** Discards the layout after a change of text, font or wrapping, and lays out again. */
void StationTextItem::resetLayout()
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
        m_lines =
            std::make_unique<TextLines>(withLineBreaks(m_text, m_wraps ? QChar(QChar::LineSeparator) : u' '), m_font);
    // Setting the implicit size may resize the item, which calls layOut() again. The outer call then stops.
    const int pass = ++m_layoutPass;
    static const QMetaMethod implicitWidth = QMetaMethod::fromSignal(&QQuickItem::implicitWidthChanged);
    if (!isUnbounded() || isSignalConnected(implicitWidth))
        setImplicitWidth(naturalWidth());
    if (pass == m_layoutPass)
        isUnbounded() ? layOutInDocument() : breakLines();
    if (pass == m_layoutPass)
        setImplicitHeight(m_topPadding + contentHeight());
    if (pass == m_layoutPass)
        positionLines();
}

/** Whether nothing limits the number of lines. Then the document alone lays out the text. */
bool StationTextItem::isUnbounded() const
{
    return m_document && m_wraps && m_maximumLineCount == 0 && widthValid() && std::isinf(availableHeight());
}

void StationTextItem::layOutInDocument()
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
        m_naturalWidth = m_lines->maximumLineWidth();
        m_isTruncated = false;
    }
    return m_naturalWidth;
}

void StationTextItem::breakLines()
{
    const bool mustBreak = widthValid() && (m_wraps || m_naturalWidth > width() + tolerance);
    // naturalWidth() has already laid out a single line that fits.
    if (mustBreak || m_wraps || m_isTruncated)
        m_isTruncated = m_lines->elide(mustBreak ? width() : TextLines::unbounded, maximumVisibleLines());
    m_lineCount = std::max(1, m_lines->count());
    m_contentWidth = m_lines->maximumLineWidth();
}

/** Publishes the positions of the lines and updates the document that draws them. */
void StationTextItem::positionLines()
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
    if (m_documentText == m_lines->laidOutText() && cursor.blockFormat() == block)
        return;
    m_documentText = m_lines->laidOutText();
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.insertText(m_documentText.text, {});
    cursor.setBlockFormat(block);
    for (const QTextLayout::FormatRange& range : std::as_const(m_documentText.formats)) {
        cursor.setPosition(range.start);
        cursor.setPosition(range.start + range.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(range.format);
    }
    cursor.endEditBlock();
}

} // namespace quillmere
