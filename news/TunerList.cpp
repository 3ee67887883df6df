#include "TunerList.h"

#include "ShortenedText.h"
#include "StationMotion.h"
#include "Typography.h"

#include <QFontMetricsF>

#include <algorithm>
#include <limits>

namespace {

int rowIn(const QList<TunerStation>& stations, const QString& number)
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
    const QList<TunerStation> shown = stations.first(std::min(mostStations, stations.size()));
    if (shown == m_stations)
        return;
    reset(placeAmong(shown), [&] {
        m_stations = shown;
        m_buttons = buttonsOf(shown);
    });
    Q_EMIT stationsChanged();
}

void TunerList::setCurrent(const TunerStation& current)
{
    if (current == m_current)
        return;
    const bool follows = place() < 0 || isAtCurrent();
    m_current = current;
    if (!m_stations.isEmpty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CurrentRole});
    if (follows && !isAtCurrent())
        setPlace(rowIn(m_stations, current.number));
    Q_EMIT currentChanged();
}

void TunerList::setStripWidth(double stripWidth)
{
    if (stripWidth == m_stripWidth)
        return;
    m_stripWidth = stripWidth;
    QList<Button> buttons = buttonsOf(m_stations);
    if (buttons != m_buttons)
        reset(place(), [&] { m_buttons = std::move(buttons); });
    Q_EMIT stripWidthChanged();
}

int TunerList::longestButton() const
{
    return m_stripWidth > 0 ? int(m_stripWidth) - 2 * sidePadding() : std::numeric_limits<int>::max();
}

double TunerList::growth(double extent)
{
    constexpr double mostGrowth = 2.0 * 2 / 3 * spacing(); // points, on both sides together
    return std::min(StationMotion::plateScale(), 1 + mostGrowth / extent);
}

QList<TunerList::Button> TunerList::buttonsOf(const QList<TunerStation>& stations) const
{
    const int room = std::max(0, longestButton() - 2 * margin() - gap());
    const QFontMetricsF numberMetrics(numberFont());
    const QFontMetricsF labelMetrics(labelFont());
    QList<Button> buttons;
    for (const TunerStation& station : stations) {
        Button button{shortenedLine(station.number, longestText), shortenedLine(station.label, longestText), 0, 0};
        const int number = qCeil(numberMetrics.horizontalAdvance(button.number));
        const int label = qCeil(labelMetrics.horizontalAdvance(button.label));
        // Where both are too long, each has half of the room.
        button.numberExtent = std::min(number, std::max(room / 2, room - label));
        button.extent = margin() + button.numberExtent + gap() + std::min(label, room - button.numberExtent) + margin();
        buttons.append(std::move(button));
    }
    return buttons;
}

bool TunerList::isAtCurrent() const
{
    return place() >= 0 && m_stations.at(place()).number == m_current.number;
}

// On the same station, where it did not move if two share a number; else on the current one.
int TunerList::placeAmong(const QList<TunerStation>& stations) const
{
    if (stations.isEmpty())
        return -1;
    const int current = rowIn(stations, m_current.number);
    if (place() < 0)
        return current;
    const QString number = m_stations.at(place()).number;
    if (place() < stations.size() && stations.at(place()).number == number)
        return place();
    const int same = rowIn(stations, number);
    if (same >= 0)
        return same;
    return current >= 0 ? current : std::min(place(), int(stations.size()) - 1);
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
    case NumberExtentRole:
        return button.numberExtent;
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
    return {{KeyRole, "key"},       {NumberRole, "number"},    {LabelRole, "label"}, {NumberExtentRole, "numberExtent"},
            {ExtentRole, "extent"}, {CurrentRole, "isCurrent"}};
}
