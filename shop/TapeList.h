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
    /** What the viewer reads while there are no tapes; empty while there are some. */
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY emptyTextChanged)
    /** Whether a tape plays; set, the current one starts to, and where there is none nothing does. */
    Q_PROPERTY(bool playing READ isPlaying WRITE setPlaying NOTIFY playingChanged)
    /** The tape that plays, or played last. */
    Q_PROPERTY(Tape chosen READ chosen NOTIFY chosenChanged)

public:
    enum Role { TextRole = Qt::UserRole, IsTapeRole };

    using QAbstractListModel::QAbstractListModel;

    Store* store() const { return m_store; }
    void setStore(Store* store);
    int currentRow() const { return m_currentRow; }
    QString emptyText() const;
    bool isPlaying() const { return m_playing; }
    void setPlaying(bool playing);
    const Tape& chosen() const { return m_chosen; }

    /** Steps to the next tape that way, +1 down or -1 up; stays where there is none. */
    Q_INVOKABLE void move(int step);

    /** The tape of the current row; a default one while there is none. */
    Tape currentTape() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void storeChanged();
    void currentRowChanged();
    void emptyTextChanged();
    void playingChanged();
    void chosenChanged();

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
    Tape m_chosen;
    bool m_playing = false;
};
