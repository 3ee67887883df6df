#include "TickerRenderer.h"

#include "BroadcastTexts.h"
#include "Graphemes.h"
#include "StationPalette.h"
#include "TextLines.h"
#include "Typography.h"

#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

// The left end of the line moves from one ticker width right of the ticker's left edge to one ticker width left of it.
// So no more of the line than this becomes visible.
constexpr double visibleWidths = 2; // in ticker widths

// Code points to lay out first. More than the widest display shows of an ordinary text.
constexpr qsizetype initialLength = 1024;
// Code points to lay out at most, of a text that cannot be cut without changing its left end.
constexpr qsizetype maximumLength = 50'000;
// Points to lay out beyond the visible width, because the shape of a letter depends on its neighbours.
constexpr double cutMargin = 100;
constexpr double unlimitedWidth = 10'000'000; // points

/** `text` with each line break and other control character replaced by a space. */
QString singleLine(QString text)
{
    const auto isControl = [](QChar unit) {
        return unit.category() == QChar::Other_Control || unit == QChar::LineSeparator ||
               unit == QChar::ParagraphSeparator;
    };
    std::replace_if(text.begin(), text.end(), isControl, u' ');
    return text;
}

/**
 * Reads a line code point by code point, and determines where the text direction is that of the line. It is a
 * conservative approximation of the Unicode bidirectional algorithm.
 */
class DirectionTracker
{
public:
    explicit DirectionTracker(bool isRightToLeft) : m_isRightToLeft(isRightToLeft) {}

    void advance(char32_t point)
    {
        switch (QChar::direction(point)) {
        case QChar::DirLRE:
        case QChar::DirRLE:
        case QChar::DirLRO:
        case QChar::DirRLO:
        case QChar::DirLRI:
        case QChar::DirRLI:
        case QChar::DirFSI:
            ++m_depth;
            break;
        case QChar::DirPDF:
        case QChar::DirPDI:
            m_depth = std::max(0, m_depth - 1);
            m_isOpposite = true; // because the following text may belong to the embedded text
            break;
        case QChar::DirL:
            setStrongDirection(!m_isRightToLeft);
            break;
        case QChar::DirR:
        case QChar::DirAL:
            setStrongDirection(m_isRightToLeft);
            break;
        case QChar::DirEN:
            if (m_isRightToLeft)
                setStrongDirection(false);
            break;
        case QChar::DirAN:
            setStrongDirection(false);
            break;
        default:
            break;
        }
    }

    /**
     * Whether the text direction here is that of the line. Neutral characters have the direction of the letter before.
     */
    bool matchesLine() const { return m_depth == 0 && !m_isOpposite; }

private:
    void setStrongDirection(bool matchesLine)
    {
        if (m_depth == 0)
            m_isOpposite = !matchesLine;
    }

    bool m_isRightToLeft;
    bool m_isOpposite = false;
    int m_depth = 0; ///< nesting depth of directional embeddings, overrides and isolates
};

/**
 * The part of the ticker line that determines its left end: the beginning of a left-to-right line, the end of a
 * right-to-left line. The line is cut only where the text has the direction of the line, because a run of the opposite
 * direction is reordered as a whole.
 */
class LeftPart
{
public:
    explicit LeftPart(const QString& line) : m_points(line.toUcs4()), m_isRightToLeft(line.isRightToLeft())
    {
        if (m_points.size() > maximumLength)
            m_points = m_isRightToLeft ? m_points.last(maximumLength) : m_points.first(maximumLength);
    }

    bool isRightToLeft() const { return m_isRightToLeft; }
    qsizetype size() const { return m_points.size(); }

    /** At least `count` code points from the left end; all if there are fewer. */
    QString leftmostCharacters(qsizetype count) const
    {
        if (count >= size())
            return textOf(m_points);
        return textOf(m_isRightToLeft ? m_points.sliced(cutAtOrBefore(size() - count))
                                      : m_points.first(cutAtOrAfter(count)));
    }

private:
    static QString textOf(const QList<uint>& points)
    {
        return QString::fromUcs4(reinterpret_cast<const char32_t*>(points.constData()), points.size());
    }

    qsizetype cutAtOrAfter(qsizetype from) const
    {
        DirectionTracker tracker(m_isRightToLeft);
        for (qsizetype index = 0; index < size(); ++index) {
            tracker.advance(m_points.at(index));
            if (index + 1 >= from && tracker.matchesLine())
                return index + 1;
        }
        return size();
    }

    qsizetype cutAtOrBefore(qsizetype upTo) const
    {
        DirectionTracker tracker(m_isRightToLeft);
        qsizetype cut = 0;
        for (qsizetype index = 0; index <= upTo; ++index) {
            tracker.advance(m_points.at(index));
            if (tracker.matchesLine())
                cut = index;
        }
        return cut;
    }

    QList<uint> m_points;
    bool m_isRightToLeft;
};

QTextLine layOut(QTextLayout& layout, const QString& text, bool isRightToLeft)
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    layout.setTextOption(option);
    const TextLines::FormattedText formatted = TextLines::withEmojiFont(text);
    layout.setText(formatted.text);
    layout.setFormats(formatted.formats);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid())
        line.setLineWidth(unlimitedWidth);
    layout.endLayout();
    return line;
}

} // namespace

QFont TickerRenderer::font()
{
    return Typography::standard(28, QFont::DemiBold, 2);
}

TickerPicture TickerRenderer::paint(const std::stop_token& stop) const
{
    TickerPicture picture{tickerPeriod(Graphemes::count(text)), 0, {}};
    const LeftPart leftPart(singleLine(text + tickerSeparator() + text));
    QTextLayout layout({}, font());
    QTextLine line;
    const double visibleWidth = visibleWidths * width;
    qsizetype count = initialLength;
    do {
        if (stop.stop_requested())
            return picture;
        line = layOut(layout, leftPart.leftmostCharacters(count), leftPart.isRightToLeft());
        count *= 4;
    } while (count / 4 < leftPart.size() && line.naturalTextWidth() < visibleWidth + cutMargin);

    picture.baseline = int(std::ceil(line.ascent() * scale));
    const int height = picture.baseline + int(std::ceil(line.descent() * scale));
    // One pixel more than visible, because the position of the line is rounded to whole pixels.
    const int length = int(std::ceil(std::min(line.naturalTextWidth(), visibleWidth) * scale)) + 1;
    for (int left = 0; left < length && !stop.stop_requested(); left += maximumTileWidth) {
        QImage tile(std::min(maximumTileWidth, length - left), height, QImage::Format_ARGB32_Premultiplied);
        tile.fill(Qt::transparent);
        QPainter painter(&tile);
        painter.translate(-left, picture.baseline);
        painter.scale(scale, scale);
        painter.setPen(StationPalette::parchment());
        layout.draw(&painter, QPointF(0, -line.ascent()));
        picture.tiles.append(tile);
    }
    return picture;
}

} // namespace quillmere
