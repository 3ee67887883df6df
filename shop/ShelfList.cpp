#include "ShelfList.h"

#include <algorithm>

namespace {

/** The index of the first element that `suits`, -1 when none does. */
template<typename List, typename Condition>
int find(const List& list, Condition suits)
{
    const auto found = std::find_if(list.cbegin(), list.cend(), suits);
    return found == list.cend() ? -1 : int(found - list.cbegin());
}

/** The shelf with cassettes that is nearest to a place, of two the lower one. */
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

void ShelfList::show(const QList<Shelf>& shelves, Market market)
{
    QList<Change> changes = changesTo(shelves, market);
    const int place = changePlace(changes, market);
    const QList<Row> former = m_rows;

    reset(place, [&] {
        // The rows first: the focus comes to its tape when the list itself has changed, and must find it there.
        QList<Row> rows;
        for (Change& change : changes)
            rows.append(createRow(change));
        m_rows = std::move(rows);
    });
    for (const Row& row : former) {
        const auto isItself = [&row](const Row& other) { return other.key == row.key; };
        if (std::none_of(m_rows.cbegin(), m_rows.cend(), isItself))
            row.cassettes->deleteLater();
    }
}

QList<ShelfList::Change> ShelfList::changesTo(const QList<Shelf>& shelves, Market market) const
{
    QList<Row> former = market == Market::Same ? m_rows : QList<Row>();
    QList<Change> changes;
    for (const Shelf& shelf : shelves) {
        Change change{{nullptr, shelf, 0}, CassetteRow::Content(shelf), -1};
        const int equal = find(former, [&shelf](const Row& row) { return row.shelf == shelf; });
        if (equal >= 0) {
            change.row.cassettes = former.at(equal).cassettes;
            change.row.key = former.at(equal).key;
            change.place = change.row.cassettes->placeIn(change.content);
            former.removeAt(equal);
        }
        changes.append(std::move(change));
    }
    return changes;
}

// Puts the place of the shelf that has the focus where the viewer's tape is, and tells which shelf it is.
int ShelfList::changePlace(QList<Change>& changes, Market market) const
{
    if (place() < 0)
        return -1;
    const Row& former = m_rows.at(place());
    int itself = find(changes, [&](const Change& change) { return change.row.key == former.key; });
    const int cassette = former.cassettes->place();
    if (!hasFocus() || cassette < 0)
        return itself;

    if (itself < 0)
        itself = find(changes, [&](const Change& change) {
            return !change.row.cassettes && change.row.shelf.name == former.shelf.name;
        });
    const qint64 id = former.cassettes->content().covers.at(cassette).id;
    const auto hasTape = [&](const Change& change) { return change.content.rowOf(id, cassette) >= 0; };
    const bool isStillThere = itself >= 0 && hasTape(changes.at(itself));
    int shelf = isStillThere ? itself : find(changes, hasTape);
    if (shelf >= 0) {
        changes[shelf].place = changes.at(shelf).content.rowOf(id, cassette);
    } else {
        shelf = nearestShelf(changes, itself >= 0 ? itself : place());
        if (shelf >= 0 && changes.at(shelf).place < 0)
            changes[shelf].place = market == Market::Same ? changes.at(shelf).content.nearest(cassette) : 0;
    }
    // With its row it keeps its items, the focused one among them.
    if (shelf >= 0 && shelf == itself) {
        changes[shelf].row.cassettes = former.cassettes;
        changes[shelf].row.key = former.key;
    }
    return shelf;
}

ShelfList::Row ShelfList::createRow(Change& change)
{
    if (!change.row.cassettes) {
        change.row.cassettes = new CassetteRow(this);
        change.row.key = ++m_rowsMade;
    }
    change.row.cassettes->show(std::move(change.content), change.place);
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
