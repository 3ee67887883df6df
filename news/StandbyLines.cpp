#include "StandbyLines.h"

#include "LineBudget.h"
#include "Typography.h"

#include <algorithm>

namespace {

// Each has these lines whatever the others say.
constexpr int leastLabelLines = 2;
constexpr int leastTitleLines = 2;
constexpr int leastNoteLines = 4;

} // namespace

StandbyLines::StandbyLines(QObject* parent) : QObject(parent)
{
    connect(this, &StandbyLines::inputChanged, this, &StandbyLines::share);
}

QFont StandbyLines::titleFont()
{
    return Typography::standard(30);
}

QFont StandbyLines::noteFont()
{
    return Typography::standard(24);
}

void StandbyLines::share()
{
    if (m_width <= 0 || m_height <= 0)
        return;
    const QList<int> lines = linesThatFit({{m_label, m_labelFont, m_width, m_labelGap, leastLabelLines},
                                           {m_title, titleFont(), m_width, m_rowGap, leastTitleLines},
                                           {m_note, noteFont(), m_width, m_rowGap, leastNoteLines}},
                                          m_height);
    // A text that is not there is hidden; none is no number of lines.
    const auto shown = [&](qsizetype text) { return std::max(1, lines.at(text)); };
    if (m_labelLines == shown(0) && m_titleLines == shown(1) && m_noteLines == shown(2))
        return;
    m_labelLines = shown(0);
    m_titleLines = shown(1);
    m_noteLines = shown(2);
    Q_EMIT linesChanged();
}
