#pragma once

#include "Store.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqml.h>

/**
 * The store's shelves as one plain list: a row for each shelf's name, then one for each of its tapes. Scaffolding until
 * the shop has shelves to walk along; RewinderyView is its only user. Screen thread only; the store outlives it.
 */
class TapeList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    /** The row of the tape that has the focus, -1 while there is none. */
    Q_PROPERTY(int currentRow READ currentRow NOTIFY currentRowChanged)

public:
    enum Role { TextRole = Qt::UserRole, IsTapeRole };

    using QAbstractListModel::QAbstractListModel;

    Store* store() const { return m_store; }
    void setStore(Store* store);
    int currentRow() const { return m_currentRow; }

    /** Steps to the next tape that way, +1 down or -1 up; stays where there is none. */
    Q_INVOKABLE void move(int step);

    /** The tape of the current row; a default one while there is none. */
    Q_INVOKABLE Tape currentTape() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void storeChanged();
    void currentRowChanged();

private:
    struct Row
    {
        QString text;
        std::optional<Tape> tape; ///< nothing on a shelf's row
    };

    void rebuild();
    int rowToKeep(qint64 id, int formerRow) const;
    int nextTape(int row, int step) const;
    void setCurrentRow(int row);

    QPointer<Store> m_store;
    QList<Row> m_rows;
    int m_currentRow = -1;
};

/** Qt 6.4 does not describe its own model class to the QML tools. */
struct ItemModelForQmlTools
{
    Q_GADGET
    QML_FOREIGN(QAbstractItemModel)
    QML_ANONYMOUS
};
