#include "TickerPrint.h"

#include "BroadcastTexts.h"
#include "Graphemes.h"
#include "StationPalette.h"
#include "TextLines.h"
#include "Typography.h"

#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr double sightInWidths = 2;        // the line stands between one width right of its place and one left of it
constexpr qsizetype firstPiece = 1024;     // code points, more than the widest display shows of an ordinary text
constexpr qsizetype longestPiece = 50'000; // of a text that cannot be cut without changing what is at its left edge
constexpr double roomForTheCut = 100;      // points beyond what is seen, as a letter's shape depends on its neighbours
constexpr double endlessLine = 10'000'000; // points

/** One line, for which there are no line breaks and no other controls. */
QString onOneLine(QString text)
{
    const auto isControl = [](QChar unit) {
        return unit.category() == QChar::Other_Control || unit == QChar::LineSeparator ||
               unit == QChar::ParagraphSeparator;
    };
    std::replace_if(text.begin(), text.end(), isControl, u' ');
    return text;
}

/** Follows a line code point by code point and tells where it runs the way that it does as a whole. */
class Flow
{
public:
    explicit Flow(bool runsLeft) : m_runsLeft(runsLeft) {}

    void follow(char32_t point)
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
            m_isAgainst = true; // as what follows may join what was nested
            break;
        case QChar::DirL:
            meet(!m_runsLeft);
            break;
        case QChar::DirR:
        case QChar::DirAL:
            meet(m_runsLeft);
            break;
        case QChar::DirEN:
            if (m_runsLeft)
                meet(false);
            break;
        case QChar::DirAN:
            meet(false);
            break;
        default:
            break;
        }
    }

    /** Spaces and signs after a letter that runs with the line do so, too. */
    bool isWithTheLine() const { return m_depth == 0 && !m_isAgainst; }

private:
    void meet(bool isWithTheLine)
    {
        if (m_depth == 0)
            m_isAgainst = !isWithTheLine;
    }

    bool m_runsLeft;
    bool m_isAgainst = false;
    int m_depth = 0; ///< of texts with a direction of their own
};

/**
 * The ticker's line as far as it must be known to draw its left edge. A line that runs from the left begins there, one
 * that runs from the right ends there. It is cut only where its own direction rules, for what runs the other way is turned
 * around as a whole.
 */
class LeftEdge
{
public:
    explicit LeftEdge(const QString& line) : m_points(line.toUcs4()), m_runsLeft(line.isRightToLeft())
    {
        if (m_points.size() > longestPiece)
            m_points = m_runsLeft ? m_points.last(longestPiece) : m_points.first(longestPiece);
    }

    bool runsLeft() const { return m_runsLeft; }
    qsizetype size() const { return m_points.size(); }

    /** At least `count` of its code points, all if it has no more. */
    QString piece(qsizetype count) const
    {
        if (count >= size())
            return textOf(m_points);
        return textOf(m_runsLeft ? m_points.sliced(lastCut(size() - count)) : m_points.first(firstCut(count)));
    }

private:
    static QString textOf(const QList<uint>& points)
    {
        return QString::fromUcs4(reinterpret_cast<const char32_t*>(points.constData()), points.size());
    }

    qsizetype firstCut(qsizetype from) const
    {
        Flow flow(m_runsLeft);
        for (qsizetype place = 0; place < size(); ++place) {
            flow.follow(m_points.at(place));
            if (place + 1 >= from && flow.isWithTheLine())
                return place + 1;
        }
        return size();
    }

    qsizetype lastCut(qsizetype upTo) const
    {
        Flow flow(m_runsLeft);
        qsizetype cut = 0;
        for (qsizetype place = 0; place <= upTo; ++place) {
            flow.follow(m_points.at(place));
            if (flow.isWithTheLine())
                cut = place;
        }
        return cut;
    }

    QList<uint> m_points;
    bool m_runsLeft;
};

QTextLine layOut(QTextLayout& layout, const QString& text, bool runsLeft)
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(runsLeft ? Qt::RightToLeft : Qt::LeftToRight);
    layout.setTextOption(option);
    const TextLines::Letters letters = TextLines::lettersOf(text);
    layout.setText(letters.text);
    layout.setFormats(letters.formats);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid())
        line.setLineWidth(endlessLine);
    layout.endLayout();
    return line;
}

} // namespace

QFont TickerPrint::font()
{
    return Typography::standard(28, QFont::DemiBold, 2);
}

TickerPicture TickerPrint::paint(const std::stop_token& stop) const
{
    TickerPicture picture{tickerPeriod(Graphemes::count(text)), 0, {}};
    const LeftEdge edge(onOneLine(text + tickerSeparator() + text));
    QTextLayout layout({}, font());
    QTextLine line;
    const double seen = sightInWidths * width;
    qsizetype count = firstPiece;
    do {
        if (stop.stop_requested())
            return picture;
        line = layOut(layout, edge.piece(count), edge.runsLeft());
        count *= 4;
    } while (count / 4 < edge.size() && line.naturalTextWidth() < seen + roomForTheCut);

    picture.baseline = int(std::ceil(line.ascent() * scale));
    const int height = picture.baseline + int(std::ceil(line.descent() * scale));
    // One pixel more than is seen, as the line stands on whole ones.
    const int length = int(std::ceil(std::min(line.naturalTextWidth(), seen) * scale)) + 1;
    for (int left = 0; left < length && !stop.stop_requested(); left += widestTile) {
        QImage tile(std::min(widestTile, length - left), height, QImage::Format_ARGB32_Premultiplied);
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
