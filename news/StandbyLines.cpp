#include "StandbyLines.h"

#include "LineBudget.h"
#include "Typography.h"

#include <algorithm>

namespace {

// Reserved for each text, however long the others are.
constexpr int minimumLabelLines = 2;
constexpr int minimumTitleLines = 2;
constexpr int minimumNoteLines = 4;

} // namespace

StandbyLines::StandbyLines(QObject* parent) : QObject(parent)
{
    connect(this, &StandbyLines::inputChanged, this, &StandbyLines::updateLines);
}

QFont StandbyLines::titleFont()
{
    return Typography::standard(30);
}

QFont StandbyLines::noteFont()
{
    return Typography::standard(24);
}

void StandbyLines::updateLines()
{
    if (m_width <= 0 || m_height <= 0)
        return;
    const QList<int> lines = linesThatFit({{m_label, m_labelFont, m_width, m_labelGap, minimumLabelLines},
                                           {m_title, titleFont(), m_width, m_rowGap, minimumTitleLines},
                                           {m_note, noteFont(), m_width, m_rowGap, minimumNoteLines}},
                                          m_height);
    // For an empty text the result is 0 lines, but StationText takes 0 as unlimited.
    const auto shown = [&](qsizetype text) { return std::max(1, lines.at(text)); };
    if (m_labelLines == shown(0) && m_titleLines == shown(1) && m_noteLines == shown(2))
        return;
    m_labelLines = shown(0);
    m_titleLines = shown(1);
    m_noteLines = shown(2);
    Q_EMIT linesChanged();
}
