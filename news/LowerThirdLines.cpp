#include "LowerThirdLines.h"

#include "LineBudget.h"
#include "Typography.h"

#include <algorithm>

namespace {

constexpr int minimumLines = 2; // reserved for each text, however long the other is

} // namespace

LowerThirdLines::LowerThirdLines(QObject* parent) : QObject(parent)
{
    connect(this, &LowerThirdLines::inputChanged, this, &LowerThirdLines::updateLines);
}

QFont LowerThirdLines::titleFont()
{
    return Typography::standard(40, QFont::Black);
}

QFont LowerThirdLines::stationFont()
{
    return Typography::standard(26, QFont::DemiBold, 4);
}

void LowerThirdLines::updateLines()
{
    if (m_titleWidth <= 0 || m_stationWidth <= 0 || m_height <= 0)
        return;
    const QList<int> lines = linesThatFit({{m_title, titleFont(), m_titleWidth, 0, minimumLines},
                                           {m_station, stationFont(), m_stationWidth, 0, minimumLines}},
                                          m_height);
    // For an empty text the result is 0 lines, but StationText takes 0 as unlimited.
    const auto shown = [&](qsizetype text) { return std::max(1, lines.at(text)); };
    if (m_titleLines == shown(0) && m_stationLines == shown(1))
        return;
    m_titleLines = shown(0);
    m_stationLines = shown(1);
    Q_EMIT linesChanged();
}
