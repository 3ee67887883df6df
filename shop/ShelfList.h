#pragma once

#include "CassetteRow.h"

namespace quillmere {

/**
 * The shelves of the shop, from top to bottom. After a refresh, an equal shelf (same name and covers) keeps its
 * CassetteRow and the current row in it. Any other shelf, and every shelf of another market, gets a new CassetteRow
 * that starts at its first cassette. If the focus is in the list, it stays on the same tape, and a shelf with the name
 * of the shelf that had the focus keeps its CassetteRow. If the tape is gone, the focus moves to the nearest shelf with
 * cassettes. Screen thread only; RewinderyController owns it.
 */
class ShelfList : public quillmere::CurrentRowModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created by RewinderyController.")

public:
    enum Role { KeyRole = Qt::UserRole, CassettesRole };

    /** Whether new shelves belong to the same market as the previous ones. */
    enum class Market { Same, Another };

    using CurrentRowModel::CurrentRowModel;

    void setShelves(const QList<Shelf>& shelves, Market market = Market::Same);

    CassetteRow* row(int shelf) const { return m_rows.value(shelf).cassettes; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Row
    {
        CassetteRow* cassettes = nullptr;
        Shelf shelf; ///< the shelf that it shows
        int key = 0; ///< never reused by another row
    };
    /** The next state of a row. */
    struct Change
    {
        Row row; ///< `cassettes` is null if a new row is needed
        CassetteRow::Content content;
        int currentRow;
    };

    QList<Change> changesFor(const QList<Shelf>& shelves, Market market) const;
    int updateCurrentRows(QList<Change>& changes, Market market) const;
    Row createRow(Change& change);

    QList<Row> m_rows;
    int m_lastKey = 0;
};

} // namespace quillmere
