#include "FittedText.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr double tolerance = 0.01;
constexpr double finestStep = 1.0 / 64; // of the size, in the search for the one that fits

QString onOneLine(const QString& text)
{
    QString line = text.left(FittedText::longest);
    if (!line.isEmpty() && line.back().isHighSurrogate())
        line.chop(1);
    for (QChar& character : line) {
        if (character.category() == QChar::Other_Control)
            character = u' ';
    }
    return line.simplified();
}

} // namespace

FittedText::FittedText(const QString& text, const QFont& font) : m_lines(onOneLine(text), font) {}

FittedText FittedText::line(const QString& text, const QFont& font, double width, double least)
{
    FittedText fitted(text, font);
    fitted.m_lines.breakLines(TextLines::unbounded, QTextOption::NoWrap, 1);
    fitted.m_scale = std::clamp(width / std::max(fitted.width(), tolerance), least, 1.0);
    if (fitted.width() > width + tolerance)
        fitted.elide(width, 1);
    return fitted;
}

FittedText FittedText::block(const QString& text, const QFont& font, QSizeF room, double least)
{
    FittedText fitted(text, font);
    if (fitted.fits(1, room))
        return fitted;
    if (!fitted.fits(least, room)) {
        fitted.elide(room.width(), fitted.linesIn(room.height()));
        return fitted;
    }
    double small = least;
    double large = 1;
    while (large - small > finestStep) {
        const double middle = (small + large) / 2;
        (fitted.fits(middle, room) ? small : large) = middle;
    }
    fitted.fits(small, room);
    return fitted;
}

int FittedText::linesIn(double height) const
{
    return std::max(1, int((height + tolerance) / (m_lines.height() * m_scale)));
}

/** Lays the text out at `scale`; whether it fits with all its words whole. */
bool FittedText::fits(double scale, QSizeF room)
{
    m_scale = scale;
    if (!m_lines.breakLines(room.width() / scale, QTextOption::WordWrap, linesIn(room.height())))
        return false;
    return width() <= room.width() + tolerance && height() <= room.height() + tolerance;
}

/** Cuts what does not fit on `atMost` lines of `width` at the present scale, even with words broken. */
void FittedText::elide(double width, int atMost)
{
    m_elided = m_lines.elide(width / m_scale, atMost);
}

double FittedText::width() const
{
    return m_lines.widest() * m_scale;
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
