#include "MarketList.h"

#include "RewinderyTexts.h"
#include "ShortenedText.h"
#include "Typography.h"

#include <QFontMetricsF>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

constexpr int fewestMarkets = 2;

} // namespace

QFont MarketList::titleFont()
{
    return Typography::standard(24);
}

QFont MarketList::countFont()
{
    return Typography::standard(20, QFont::DemiBold);
}

void MarketList::show(const CatalogSummary& summary, const QString& selection)
{
    CatalogSummary shown{summary.tapes, summary.markets.first(std::min(mostMarkets, summary.markets.size()))};
    if (shown == m_summary)
        return setSelection(selection);
    m_summary = std::move(shown);
    m_selection = selection;
    setChips(chipsOf(m_summary));
}

void MarketList::setSelection(const QString& selection)
{
    if (selection == m_selection)
        return;
    m_selection = selection;
    if (isShown())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {SelectedRole});
}

void MarketList::setChips(QList<Chip> chips)
{
    const QScopedValueRollback changing(m_isChanging, true);
    const bool wasShown = isShown();
    const int place = placeAmong(chips);
    beginResetModel();
    m_chips = std::move(chips);
    m_place = place;
    Q_EMIT placeChanged();
    endResetModel();
    if (isShown() != wasShown)
        Q_EMIT isShownChanged();
}

QList<MarketList::Chip> MarketList::chipsOf(const CatalogSummary& summary)
{
    if (summary.markets.size() < fewestMarkets)
        return {};
    const QFontMetricsF titleMetrics(titleFont());
    const QFontMetricsF countMetrics(countFont());
    QList<Chip> chips;
    const auto add = [&](const QString& slug, const QString& name, qint64 tapes) {
        Chip chip{slug, shortenedLine(name, longestTitle), QString::number(tapes), 0};
        chip.extent = padding() + std::min(qCeil(titleMetrics.horizontalAdvance(chip.title)), widestTitle) + gap() +
                      qCeil(countMetrics.horizontalAdvance(chip.count)) + padding();
        chips.append(std::move(chip));
    };
    add({}, RewinderyTexts::allMarkets(), summary.tapes);
    for (const TapeMarket& market : summary.markets)
        add(market.slug, market.name, market.tapes);
    return chips;
}

// On the same market, where it did not move if two share a slug; else as near as can be.
int MarketList::placeAmong(const QList<Chip>& chips) const
{
    if (m_place < 0)
        return -1;
    const QString slug = slugAt(m_place);
    if (m_place < chips.size() && chips.at(m_place).slug == slug)
        return m_place;
    const auto same =
        std::find_if(chips.cbegin(), chips.cend(), [&slug](const Chip& chip) { return chip.slug == slug; });
    return same != chips.cend() ? int(same - chips.cbegin()) : std::min(m_place, int(chips.size()) - 1);
}

void MarketList::hold(int chip)
{
    if (m_isChanging || chip == m_place || chip < 0 || chip >= rowCount())
        return;
    m_place = chip;
    Q_EMIT placeChanged();
}

void MarketList::pick(int chip)
{
    if (chip >= 0 && chip < rowCount())
        Q_EMIT picked(slugAt(chip));
}

int MarketList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_chips.size());
}

QVariant MarketList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Chip& chip = m_chips.at(index.row());
    switch (role) {
    case KeyRole:
        return chip.slug;
    case TitleRole:
        return chip.title;
    case CountRole:
        return chip.count;
    case SelectedRole:
        return chip.slug == m_selection;
    case ExtentRole:
        return chip.extent;
    default:
        return {};
    }
}

QHash<int, QByteArray> MarketList::roleNames() const
{
    return {{KeyRole, "key"},
            {TitleRole, "title"},
            {CountRole, "count"},
            {SelectedRole, "isSelected"},
            {ExtentRole, "extent"}};
}
