#pragma once

#include "CassetteRow.h"

/**
 * The shelves of the shop, one under the other. After a refresh an equal shelf (of the same name and covers) keeps its
 * CassetteRow with the viewer's place in it; any other shelf gets a new row, which begins at its first cassette, and so
 * does every shelf of another market. The row that has the focus is the exception: the focus stays on the same tape
 * wherever it stands now; where it is gone, it goes to the nearest one, in another market to the first of the shelf.
 * Screen thread only; the controller owns it.
 */
class ShelfList : public PlacedListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shop's controller makes it.")

public:
    enum Role { KeyRole = Qt::UserRole, CassettesRole };

    /** Which market's shelves are shown: that of those before, or another. */
    enum class Market { Same, Another };

    using PlacedListModel::PlacedListModel;

    void show(const QList<Shelf>& shelves, Market market = Market::Same);

    CassetteRow* row(int shelf) const { return m_rows.value(shelf).cassettes; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Row
    {
        CassetteRow* cassettes = nullptr;
        Shelf shelf; ///< that it shows
        int key = 0; ///< its own among all rows that ever were
    };
    /** What a row will show. */
    struct Change
    {
        Row row; ///< without cassettes where it is to be a new one
        CassetteRow::Content content;
        int place;
    };

    QList<Change> changesTo(const QList<Shelf>& shelves, Market market) const;
    int changePlace(QList<Change>& changes, Market market) const;
    Row createRow(Change& change);

    QList<Row> m_rows;
    int m_rowsMade = 0;
};
