#include "FittedText.h"

#include "Text.h"

#include <QPainter>

#include <algorithm>

namespace quillmere {

namespace {

constexpr double tolerance = 0.01;
constexpr double minStep = 1.0 / 64; // of the scale, in the search for the largest that fits

QString onOneLine(const QString& text)
{
    QString line = truncatedText(text, FittedText::maxLength);
    for (QChar& character : line) {
        if (character.category() == QChar::Other_Control)
            character = u' ';
    }
    return line.simplified();
}

} // namespace

FittedText::FittedText(const QString& text, const QFont& font) : m_lines(onOneLine(text), font) {}

FittedText FittedText::line(const QString& text, const QFont& font, double width, double minScale)
{
    FittedText fitted(text, font);
    fitted.m_lines.breakLines(TextLines::unbounded, QTextOption::NoWrap, 1);
    fitted.m_scale = std::clamp(width / std::max(fitted.width(), tolerance), minScale, 1.0);
    if (fitted.width() > width + tolerance)
        fitted.elide(width, 1);
    return fitted;
}

FittedText FittedText::block(const QString& text, const QFont& font, QSizeF area, double minScale)
{
    FittedText fitted(text, font);
    if (fitted.fits(1, area))
        return fitted;
    if (!fitted.fits(minScale, area)) {
        fitted.elide(area.width(), fitted.linesIn(area.height()));
        return fitted;
    }
    double small = minScale;
    double large = 1;
    while (large - small > minStep) {
        const double middle = (small + large) / 2;
        (fitted.fits(middle, area) ? small : large) = middle;
    }
    fitted.fits(small, area);
    return fitted;
}

int FittedText::linesIn(double height) const
{
    return std::max(1, int((height + tolerance) / (m_lines.height() * m_scale)));
}

/** Lays out the text at `scale`; returns whether it fits without breaking a word. */
bool FittedText::fits(double scale, QSizeF area)
{
    m_scale = scale;
    if (!m_lines.breakLines(area.width() / scale, QTextOption::WordWrap, linesIn(area.height())))
        return false;
    return width() <= area.width() + tolerance && height() <= area.height() + tolerance;
}

/** Elides the text to `maxLines` lines of `width` at the current scale; words may be broken. */
void FittedText::elide(double width, int maxLines)
{
    m_elided = m_lines.elide(width / m_scale, maxLines);
}

double FittedText::width() const
{
    return m_lines.maximumLineWidth() * m_scale;
}

double FittedText::height() const
{
    return m_lines.count() * m_lines.height() * m_scale;
}

double FittedText::ascent() const
{
    return m_lines.ascent() * m_scale;
}

void FittedText::paint(QPainter& painter, QPointF topLeft, const QColor& color) const
{
    painter.save();
    painter.translate(topLeft);
    painter.scale(m_scale, m_scale);
    painter.setPen(color);
    m_lines.draw(painter);
    painter.restore();
}

} // namespace quillmere
