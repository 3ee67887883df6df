#include "ShelfList.h"

#include <algorithm>

void ShelfList::show(const QList<Shelf>& shelves)
{
    QList<CassetteRow*> leaving = m_rows;
    QList<Change> changes;
    for (const Shelf& shelf : shelves) {
        CassetteRow::Content content(shelf);
        const auto former = std::find_if(leaving.cbegin(), leaving.cend(),
                                         [&](const CassetteRow* row) { return row->name() == content.name; });
        CassetteRow* row = former == leaving.cend() ? new CassetteRow(this) : *former;
        leaving.removeOne(row);
        const int place = row->placeIn(content);
        changes.append({row, std::move(content), place});
    }
    const int place = changePlace(changes);

    reset(place, [&] {
        // The rows first: the focus comes to its tape when the list itself has changed, and must find it there.
        QList<CassetteRow*> rows;
        for (Change& change : changes) {
            change.row->show(std::move(change.content), change.place);
            rows.append(change.row);
        }
        m_rows = std::move(rows);
    });
    for (CassetteRow* row : std::as_const(leaving))
        row->deleteLater();
}

// Puts the place of the shelf that comes to have the viewer's place where his tape is, and tells which shelf it is.
int ShelfList::changePlace(QList<Change>& changes) const
{
    const CassetteRow* former = row(place());
    if (!former || former->place() < 0)
        return nearestShelf(changes, place());
    const qint64 id = former->content().covers.at(former->place()).id;
    const auto stays = [former](const Change& change) { return change.row == former; };
    const auto sameShelf = int(std::find_if(changes.cbegin(), changes.cend(), stays) - changes.cbegin());
    const bool isThere = sameShelf < changes.size();
    if (isThere && changes.at(sameShelf).content.rowOf(id, former->place()) >= 0)
        return sameShelf;
    for (int shelf = 0; shelf < changes.size(); ++shelf) {
        const int cassette = changes.at(shelf).content.rowOf(id, former->place());
        if (cassette < 0)
            continue;
        changes[shelf].place = cassette;
        return shelf;
    }
    const int shelf = nearestShelf(changes, isThere ? sameShelf : place());
    if (shelf >= 0 && changes.at(shelf).place < 0)
        changes[shelf].place = changes.at(shelf).content.nearest(former->place());
    return shelf;
}

// The shelf with cassettes that is nearest to a place, of two the lower one.
int ShelfList::nearestShelf(const QList<Change>& changes, int shelf) const
{
    int nearest = -1;
    for (int other = 0; shelf >= 0 && other < changes.size(); ++other) {
        if (changes.at(other).content.covers.isEmpty())
            continue;
        if (nearest < 0 || std::abs(other - shelf) <= std::abs(nearest - shelf))
            nearest = other;
    }
    return nearest;
}

int ShelfList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ShelfList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    CassetteRow* cassettes = m_rows.at(index.row());
    switch (role) {
    case KeyRole:
        return cassettes->name();
    case CassettesRole:
        return QVariant::fromValue(cassettes);
    default:
        return {};
    }
}

QHash<int, QByteArray> ShelfList::roleNames() const
{
    return {{KeyRole, "key"}, {CassettesRole, "cassettes"}};
}
