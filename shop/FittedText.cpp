#include "FittedText.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace {

constexpr double unbounded = 1e6;
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

FittedText::FittedText(const QString& text, const QFont& font)
    : m_text(onOneLine(text)), m_font(font), m_layout(std::make_unique<QTextLayout>(m_text, font))
{
    const QFontMetricsF metrics(font);
    m_ascent = metrics.ascent();
    m_descent = metrics.descent();
}

FittedText FittedText::line(const QString& text, const QFont& font, double width, double least)
{
    FittedText fitted(text, font);
    fitted.breakLines(unbounded, QTextOption::NoWrap, 1);
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
    return std::max(1, int((height + tolerance) / (pitch() * m_scale)));
}

/** Lays the text out at `scale`; whether it fits with all its words whole. */
bool FittedText::fits(double scale, QSizeF room)
{
    m_scale = scale;
    if (!breakLines(room.width() / scale, QTextOption::WordWrap, linesIn(room.height())))
        return false;
    return width() <= room.width() + tolerance && height() <= room.height() + tolerance;
}

/** Whether the whole text found a place on `atMost` lines. */
bool FittedText::breakLines(double width, QTextOption::WrapMode wrap, int atMost)
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    option.setWrapMode(wrap);
    m_layout->setTextOption(option);
    m_layout->beginLayout();
    int end = 0;
    for (int i = 0; i < atMost && end < m_layout->text().size(); ++i) {
        QTextLine line = m_layout->createLine();
        line.setLineWidth(width);
        line.setPosition({0, i * pitch() + m_ascent - line.ascent()});
        end = line.textStart() + line.textLength();
    }
    m_layout->endLayout();
    return end >= m_layout->text().size();
}

/** Cuts what does not fit on `atMost` lines of `width` at the present scale, even with words broken. */
void FittedText::elide(double width, int atMost)
{
    const double room = width / m_scale;
    if (breakLines(room, QTextOption::WrapAtWordBoundaryOrAnywhere, atMost))
        return;
    m_elided = true;
    const int last = m_layout->lineAt(m_layout->lineCount() - 1).textStart();
    const QString rest = QFontMetricsF(m_font).elidedText(m_text.mid(last), Qt::ElideRight, room);
    // The separator keeps a last line that has become shorter from moving up.
    m_layout->setText(last > 0 ? m_text.first(last) + QChar::LineSeparator + rest : rest);
    breakLines(room + 1, QTextOption::WrapAtWordBoundaryOrAnywhere, atMost);
}

double FittedText::width() const
{
    double widest = 0;
    for (int i = 0; i < m_layout->lineCount(); ++i)
        widest = std::max(widest, m_layout->lineAt(i).naturalTextWidth());
    return widest * m_scale;
}

double FittedText::height() const
{
    return m_layout->lineCount() * pitch() * m_scale;
}

double FittedText::ascent() const
{
    return m_ascent * m_scale;
}

void FittedText::paint(QPainter& painter, QPointF topLeft, const QColor& color) const
{
    painter.save();
    painter.translate(topLeft);
    painter.scale(m_scale, m_scale);
    painter.setPen(color);
    m_layout->draw(&painter, QPointF());
    painter.restore();
}
