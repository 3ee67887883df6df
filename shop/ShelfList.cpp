#include "ShelfList.h"

#include <QScopedValueRollback>

#include <algorithm>

void ShelfList::show(const QList<Shelf>& shelves)
{
    const QScopedValueRollback changing(m_isChanging, true);
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

    // The rows first: the focus comes to its tape when the list itself has changed, and must find it there.
    QList<CassetteRow*> rows;
    for (Change& change : changes) {
        change.row->show(std::move(change.content), change.place);
        rows.append(change.row);
    }
    beginResetModel();
    m_rows = std::move(rows);
    m_place = place;
    Q_EMIT placeChanged();
    endResetModel();
    for (CassetteRow* row : std::as_const(leaving))
        row->deleteLater();
}

// Puts the place of the shelf that comes to have the viewer's place where his tape is, and tells which shelf it is.
int ShelfList::changePlace(QList<Change>& changes) const
{
    const CassetteRow* former = row(m_place);
    if (!former || former->place() < 0)
        return nearestShelf(changes, m_place);
    const qint64 id = former->content().covers.at(former->place()).id;
    const auto stays = [former](const Change& change) { return change.row == former; };
    const auto sameShelf = int(std::find_if(changes.cbegin(), changes.cend(), stays) - changes.cbegin());
    const bool isThere = sameShelf < changes.size();
    if (isThere && changes.at(sameShelf).content.rowOf(id, former->place()) >= 0)
        return sameShelf;
    for (int shelf = 0; shelf < changes.size(); ++shelf) {
        const int row = changes.at(shelf).content.rowOf(id, former->place());
        if (row < 0)
            continue;
        changes[shelf].place = row;
        return shelf;
    }
    const int shelf = nearestShelf(changes, isThere ? sameShelf : m_place);
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

void ShelfList::hold(int shelf)
{
    if (m_isChanging || shelf == m_place || shelf < 0 || shelf >= rowCount())
        return;
    m_place = shelf;
    Q_EMIT placeChanged();
}

int ShelfList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ShelfList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    CassetteRow* row = m_rows.at(index.row());
    switch (role) {
    case KeyRole:
        return row->name();
    case RowRole:
        return QVariant::fromValue(row);
    default:
        return {};
    }
}

QHash<int, QByteArray> ShelfList::roleNames() const
{
    return {{KeyRole, "key"}, {RowRole, "row"}};
}
