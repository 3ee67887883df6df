#include "ShelfList.h"

#include <algorithm>

namespace quillmere {

namespace {

/** The index of the first element for which `predicate` is true, else -1. */
template<typename List, typename Predicate>
int indexOf(const List& list, Predicate predicate)
{
    const auto found = std::find_if(list.cbegin(), list.cend(), predicate);
    return found == list.cend() ? -1 : int(found - list.cbegin());
}

/** The shelf nearest to `shelf` that has cassettes; of two equally near, the one below it. -1 if none has. */
template<typename Changes>
int nearestShelf(const Changes& changes, int shelf)
{
    int nearest = -1;
    for (int other = 0; other < changes.size(); ++other) {
        if (changes.at(other).content.covers.isEmpty())
            continue;
        if (nearest < 0 || std::abs(other - shelf) <= std::abs(nearest - shelf))
            nearest = other;
    }
    return nearest;
}

} // namespace

void ShelfList::setShelves(const QList<Shelf>& shelves, Market market)
{
    QList<Change> changes = changesFor(shelves, market);
    const int currentRow = updateCurrentRows(changes, market);
    const QList<Row> previous = m_rows;

    reset(currentRow, [&] {
        // Change the rows inside this reset: the focus is restored when it ends, and the tape must be in its row then.
        QList<Row> rows;
        for (Change& change : changes)
            rows.append(createRow(change));
        m_rows = std::move(rows);
    });
    for (const Row& row : previous) {
        const auto isSameRow = [&row](const Row& other) { return other.key == row.key; };
        if (std::none_of(m_rows.cbegin(), m_rows.cend(), isSameRow))
            row.cassettes->deleteLater();
    }
}

QList<ShelfList::Change> ShelfList::changesFor(const QList<Shelf>& shelves, Market market) const
{
    QList<Row> previous = market == Market::Same ? m_rows : QList<Row>();
    QList<Change> changes;
    for (const Shelf& shelf : shelves) {
        Change change{{nullptr, shelf, 0}, CassetteRow::Content(shelf), -1};
        const int equal = indexOf(previous, [&shelf](const Row& row) { return row.shelf == shelf; });
        if (equal >= 0) {
            change.row.cassettes = previous.at(equal).cassettes;
            change.row.key = previous.at(equal).key;
            change.currentRow = change.row.cassettes->currentRowIn(change.content);
            previous.removeAt(equal);
        }
        changes.append(std::move(change));
    }
    return changes;
}

/** Sets the current row of the shelf that gets the focus, and returns the index of that shelf; -1 if there is none. */
int ShelfList::updateCurrentRows(QList<Change>& changes, Market market) const
{
    if (currentRow() < 0)
        return -1;
    const Row& previous = m_rows.at(currentRow());
    int sameShelf = indexOf(changes, [&](const Change& change) { return change.row.key == previous.key; });
    const int cassette = previous.cassettes->currentRow();
    if (!hasFocus() || cassette < 0)
        return sameShelf;

    if (sameShelf < 0)
        sameShelf = indexOf(changes, [&](const Change& change) {
            return !change.row.cassettes && change.row.shelf.name == previous.shelf.name;
        });
    const qint64 id = previous.cassettes->content().covers.at(cassette).id;
    const auto hasTape = [&](const Change& change) { return change.content.rowOf(id, cassette) >= 0; };
    const bool isStillThere = sameShelf >= 0 && hasTape(changes.at(sameShelf));
    int shelf = isStillThere ? sameShelf : indexOf(changes, hasTape);
    if (shelf >= 0) {
        changes[shelf].currentRow = changes.at(shelf).content.rowOf(id, cassette);
    } else {
        shelf = nearestShelf(changes, sameShelf >= 0 ? sameShelf : currentRow());
        if (shelf >= 0 && changes.at(shelf).currentRow < 0)
            changes[shelf].currentRow = market == Market::Same ? changes.at(shelf).content.nearestRow(cassette) : 0;
    }
    // Keep the row object and its key, so that the delegate items and the focus are kept.
    if (shelf >= 0 && shelf == sameShelf) {
        changes[shelf].row.cassettes = previous.cassettes;
        changes[shelf].row.key = previous.key;
    }
    return shelf;
}

ShelfList::Row ShelfList::createRow(Change& change)
{
    if (!change.row.cassettes) {
        change.row.cassettes = new CassetteRow(this);
        change.row.key = ++m_lastKey;
    }
    change.row.cassettes->setContent(std::move(change.content), change.currentRow);
    return change.row;
}

int ShelfList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ShelfList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = m_rows.at(index.row());
    switch (role) {
    case KeyRole:
        return row.key;
    case CassettesRole:
        return QVariant::fromValue(row.cassettes);
    default:
        return {};
    }
}

QHash<int, QByteArray> ShelfList::roleNames() const
{
    return {{KeyRole, "key"}, {CassettesRole, "cassettes"}};
}

} // namespace quillmere
