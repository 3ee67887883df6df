#include "MarketList.h"

#include "RewinderyTexts.h"
#include "Text.h"
#include "Typography.h"

#include <QFontMetricsF>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int minMarkets = 2;

} // namespace

QFont MarketList::titleFont()
{
    return Typography::standard(24);
}

QFont MarketList::countFont()
{
    return Typography::standard(20, QFont::DemiBold);
}

void MarketList::setMarkets(const CatalogSummary& summary, const QString& selection)
{
    CatalogSummary shown{summary.tapes, summary.markets.first(std::min(maxMarkets, summary.markets.size()))};
    if (shown == m_summary)
        return setSelection(selection);
    m_summary = std::move(shown);
    m_selection = selection;
    setChips(createChips(m_summary));
}

void MarketList::setSelection(const QString& selection)
{
    if (selection == m_selection)
        return;
    m_selection = selection;
    if (isShown())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {SelectedRole});
    if (!hasFocus())
        setCurrentRow(rowOf(selection, m_chips));
}

void MarketList::setChips(QList<Chip> chips)
{
    const bool wasShown = isShown();
    reset(currentRowIn(chips), [&] { m_chips = std::move(chips); });
    if (isShown() != wasShown)
        Q_EMIT isShownChanged();
}

QList<MarketList::Chip> MarketList::createChips(const CatalogSummary& summary)
{
    if (summary.markets.size() < minMarkets)
        return {};
    const QFontMetricsF titleMetrics(titleFont());
    const QFontMetricsF countMetrics(countFont());
    QList<Chip> chips;
    const auto add = [&](const QString& slug, const QString& name, qint64 tapes) {
        Chip chip{slug, shortenedLine(name, maxTitleLength), QString::number(tapes), 0};
        chip.extent = padding() + std::min(qCeil(titleMetrics.horizontalAdvance(chip.title)), maxTitleWidth) + gap() +
                      qCeil(countMetrics.horizontalAdvance(chip.count)) + padding();
        chips.append(std::move(chip));
    };
    add({}, RewinderyTexts::allMarkets(), summary.tapes);
    for (const TapeMarket& market : summary.markets)
        add(market.slug, market.name, market.tapes);
    return chips;
}

// With focus: the same market, preferably in the same row, as slugs may be duplicated; else the nearest row.
// Without focus: the selected market.
int MarketList::currentRowIn(const QList<Chip>& chips) const
{
    if (currentRow() < 0 || !hasFocus())
        return rowOf(m_selection, chips);
    const QString slug = slugAt(currentRow());
    if (currentRow() < chips.size() && chips.at(currentRow()).slug == slug)
        return currentRow();
    const int same = rowOf(slug, chips);
    return same >= 0 ? same : std::min(currentRow(), int(chips.size()) - 1);
}

/** The first chip of a market, -1 if there is none. */
int MarketList::rowOf(const QString& slug, const QList<Chip>& chips)
{
    const auto chip =
        std::find_if(chips.cbegin(), chips.cend(), [&slug](const Chip& chip) { return chip.slug == slug; });
    return chip == chips.cend() ? -1 : int(chip - chips.cbegin());
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

} // namespace quillmere
