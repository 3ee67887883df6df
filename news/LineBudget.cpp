#include "LineBudget.h"

#include "TextLines.h"

#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

/** Height of the text with one line, two lines and so on, up to the first that exceeds `height`. */
QList<double> heightsOf(const WrappedText& text, double height)
{
    QList<double> heights;
    if (text.text.isEmpty())
        return heights;
    // Measured with the class that also draws the text, so that both break lines at the same positions.
    TextLines lines(QString(text.text).replace(u'\n', QChar::LineSeparator), text.font);
    constexpr double tolerance = 0.01;
    const double lineHeight = std::ceil(lines.height() - tolerance); // as in StationTextItem
    lines.breakLines(text.width, QTextOption::WrapAtWordBoundaryOrAnywhere, int(height / lineHeight) + 1);
    for (int line = 1; line <= lines.count(); ++line)
        heights.append(line * lineHeight);
    return heights;
}

class Budget
{
public:
    Budget(const QList<WrappedText>& texts, double height) : m_texts(texts), m_height(height)
    {
        for (const WrappedText& text : texts) {
            m_heights.append(heightsOf(text, height));
            m_lines.append(std::min(text.minimumLines, int(m_heights.constLast().size())));
        }
    }

    QList<int> allocate()
    {
        for (qsizetype i = m_texts.size() - 1; i >= 0; --i) {
            while (m_lines.at(i) > 1 && usedHeight() > m_height)
                --m_lines[i];
        }
        for (qsizetype i = 0; i < m_texts.size(); ++i) {
            while (m_lines.at(i) < m_heights.at(i).size()) {
                ++m_lines[i];
                if (usedHeight() > m_height) {
                    --m_lines[i];
                    break;
                }
            }
        }
        return m_lines;
    }

private:
    double usedHeight() const
    {
        double sum = 0;
        for (qsizetype i = 0; i < m_texts.size(); ++i) {
            if (m_lines.at(i) > 0)
                sum += m_texts.at(i).gap + m_heights.at(i).at(m_lines.at(i) - 1);
        }
        return sum;
    }

    const QList<WrappedText>& m_texts;
    double m_height;
    QList<QList<double>> m_heights; ///< of each text: with one line, with two lines, and so on
    QList<int> m_lines;
};

} // namespace

QList<int> linesThatFit(const QList<WrappedText>& texts, double height)
{
    return Budget(texts, height).allocate();
}

void BudgetedText::setLines(int lines)
{
    if (m_lines == lines)
        return;
    m_lines = lines;
    Q_EMIT linesChanged();
}

void LineBudget::componentComplete()
{
    connect(this, &LineBudget::heightChanged, this, &LineBudget::updateLines);
    for (const BudgetedText* text : std::as_const(m_texts))
        connect(text, &BudgetedText::inputChanged, this, &LineBudget::updateLines);
    updateLines();
}

void LineBudget::updateLines()
{
    QList<WrappedText> texts;
    for (const BudgetedText* text : std::as_const(m_texts))
        texts.append(text->wrappedText());
    const bool isLaidOut =
        m_height > 0 && std::all_of(texts.begin(), texts.end(), [](const WrappedText& text) { return text.width > 0; });
    if (!isLaidOut)
        return;
    const QList<int> lines = linesThatFit(texts, m_height);
    // For an empty text the result is 0 lines, but StationText takes 0 as unlimited.
    for (qsizetype i = 0; i < lines.size(); ++i)
        m_texts.at(i)->setLines(std::max(1, lines.at(i)));
}

} // namespace quillmere
