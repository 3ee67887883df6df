#pragma once

#include "CassetteRow.h"

/**
 * The shelves of the shop, one under the other. A shelf that is still there after a change keeps its CassetteRow, and
 * the viewer's place stays on the same tape wherever it stands now, else as near to it as can be.
 * Screen thread only; the controller owns it.
 */
class ShelfList : public PlacedListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shop's controller makes it.")

public:
    enum Role { KeyRole = Qt::UserRole, CassettesRole };

    using PlacedListModel::PlacedListModel;

    void show(const QList<Shelf>& shelves);

    CassetteRow* row(int shelf) const { return m_rows.value(shelf); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    /** What a row will show. */
    struct Change
    {
        CassetteRow* row;
        CassetteRow::Content content;
        int place;
    };

    int changePlace(QList<Change>& changes) const;
    int nearestShelf(const QList<Change>& changes, int shelf) const;

    QList<CassetteRow*> m_rows;
};
