#pragma once

#include "CassetteRow.h"

/**
 * The shelves of the shop, one under the other. A shelf that is still there after a change keeps its CassetteRow, and
 * the viewer's place stays on the same tape wherever it stands now, else as near to it as can be.
 * Screen thread only; the controller owns it.
 */
class ShelfList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shop's controller makes it.")
    /** The shelf that holds or last held the focus; -1 before any did. */
    Q_PROPERTY(int place READ place NOTIFY placeChanged FINAL)

public:
    enum Role { KeyRole = Qt::UserRole, RowRole };

    using QAbstractListModel::QAbstractListModel;

    void show(const QList<Shelf>& shelves);

    int place() const { return m_place; }
    CassetteRow* row(int shelf) const { return m_rows.value(shelf); }

    /** The viewer's move to a shelf; while the shelves change there is none. */
    Q_INVOKABLE void hold(int shelf);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void placeChanged();

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
    int m_place = -1;
    bool m_isChanging = false;
};
