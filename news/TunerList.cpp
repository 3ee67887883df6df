#include "TunerList.h"

#include "StationMotion.h"
#include "Text.h"
#include "Typography.h"

#include <QFontMetricsF>

#include <algorithm>
#include <limits>

namespace quillmere {

namespace {

int rowOf(const QList<TunerStation>& stations, const QString& number)
{
    const auto found = std::find_if(stations.cbegin(), stations.cend(),
                                    [&number](const TunerStation& station) { return station.number == number; });
    return found == stations.cend() ? -1 : int(found - stations.cbegin());
}

} // namespace

QFont TunerList::numberFont()
{
    return Typography::standard(26, QFont::Black);
}

QFont TunerList::labelFont()
{
    return Typography::standard(24);
}

void TunerList::setStations(const QList<TunerStation>& stations)
{
    const QList<TunerStation> shown = stations.first(std::min(maximumStations, stations.size()));
    if (shown == m_stations)
        return;
    reset(currentRowIn(shown), [&] {
        m_stations = shown;
        m_buttons = buttonsOf(shown);
    });
    Q_EMIT stationsChanged();
}

void TunerList::setCurrent(const TunerStation& current)
{
    if (current == m_current)
        return;
    const bool tracksCurrent = currentRow() < 0 || isOnCurrentStation();
    m_current = current;
    if (!m_stations.isEmpty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CurrentRole});
    if (tracksCurrent && !isOnCurrentStation())
        setCurrentRow(rowOf(m_stations, current.number));
    Q_EMIT currentChanged();
}

void TunerList::setStripWidth(double stripWidth)
{
    if (stripWidth == m_stripWidth)
        return;
    m_stripWidth = stripWidth;
    QList<Button> buttons = buttonsOf(m_stations);
    if (buttons != m_buttons)
        reset(currentRow(), [&] { m_buttons = std::move(buttons); });
    Q_EMIT stripWidthChanged();
}

int TunerList::maximumButtonWidth() const
{
    return m_stripWidth > 0 ? int(m_stripWidth) - 2 * sidePadding() : std::numeric_limits<int>::max();
}

double TunerList::focusScale(double extent)
{
    constexpr double maximumGrowth = 2.0 * 2 / 3 * spacing(); // points, on both sides together
    return std::min(StationMotion::plateScale(), 1 + maximumGrowth / extent);
}

QList<TunerList::Button> TunerList::buttonsOf(const QList<TunerStation>& stations) const
{
    const int availableWidth = std::max(0, maximumButtonWidth() - 2 * margin() - gap());
    const QFontMetricsF numberMetrics(numberFont());
    const QFontMetricsF labelMetrics(labelFont());
    QList<Button> buttons;
    for (const TunerStation& station : stations) {
        Button button{shortenedLine(station.number, maximumTextLength), shortenedLine(station.label, maximumTextLength),
                      0, 0};
        const int number = qCeil(numberMetrics.horizontalAdvance(button.number));
        const int label = qCeil(labelMetrics.horizontalAdvance(button.label));
        // If both are too long, each gets half of the width.
        button.numberWidth = std::min(number, std::max(availableWidth / 2, availableWidth - label));
        button.extent =
            margin() + button.numberWidth + gap() + std::min(label, availableWidth - button.numberWidth) + margin();
        buttons.append(std::move(button));
    }
    return buttons;
}

bool TunerList::isOnCurrentStation() const
{
    return currentRow() >= 0 && m_stations.at(currentRow()).number == m_current.number;
}

/**
 * Row that becomes current if the list changes to `stations`: the row of the same station, by number. If that station
 * is gone, the row of the station on screen. A row does not change if its station has the same number as before.
 */
int TunerList::currentRowIn(const QList<TunerStation>& stations) const
{
    if (stations.isEmpty())
        return -1;
    const int current = rowOf(stations, m_current.number);
    if (currentRow() < 0)
        return current;
    const QString number = m_stations.at(currentRow()).number;
    if (currentRow() < stations.size() && stations.at(currentRow()).number == number)
        return currentRow();
    const int same = rowOf(stations, number);
    if (same >= 0)
        return same;
    return current >= 0 ? current : std::min(currentRow(), int(stations.size()) - 1);
}

void TunerList::pick(int row)
{
    if (row >= 0 && row < rowCount())
        Q_EMIT picked(m_stations.at(row));
}

int TunerList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_stations.size());
}

QVariant TunerList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Button& button = m_buttons.at(index.row());
    switch (role) {
    case KeyRole:
        return m_stations.at(index.row()).number;
    case NumberRole:
        return button.number;
    case LabelRole:
        return button.label;
    case NumberWidthRole:
        return button.numberWidth;
    case ExtentRole:
        return button.extent;
    case CurrentRole:
        return m_stations.at(index.row()).number == m_current.number;
    default:
        return {};
    }
}

QHash<int, QByteArray> TunerList::roleNames() const
{
    return {{KeyRole, "key"},       {NumberRole, "number"},    {LabelRole, "label"}, {NumberWidthRole, "numberWidth"},
            {ExtentRole, "extent"}, {CurrentRole, "isCurrent"}};
}

} // namespace quillmere
