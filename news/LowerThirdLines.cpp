#include "LowerThirdLines.h"

#include "LineBudget.h"
#include "Typography.h"

#include <algorithm>

namespace {

constexpr int leastLines = 2; // each has these whatever the other says

} // namespace

LowerThirdLines::LowerThirdLines(QObject* parent) : QObject(parent)
{
    connect(this, &LowerThirdLines::inputChanged, this, &LowerThirdLines::share);
}

QFont LowerThirdLines::titleFont()
{
    return Typography::standard(40, QFont::Black);
}

QFont LowerThirdLines::stationFont()
{
    return Typography::standard(26, QFont::DemiBold, 4);
}

void LowerThirdLines::share()
{
    if (m_titleWidth <= 0 || m_stationWidth <= 0 || m_height <= 0)
        return;
    const QList<int> lines = linesThatFit({{m_title, titleFont(), m_titleWidth, 0, leastLines},
                                           {m_station, stationFont(), m_stationWidth, 0, leastLines}},
                                          m_height);
    // A text that is not there is empty; none is no number of lines.
    const auto shown = [&](qsizetype text) { return std::max(1, lines.at(text)); };
    if (m_titleLines == shown(0) && m_stationLines == shown(1))
        return;
    m_titleLines = shown(0);
    m_stationLines = shown(1);
    Q_EMIT linesChanged();
}
