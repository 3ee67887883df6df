#pragma once

#include "KeyboardLayout.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * List model of the keys of the on-screen keyboard. A page change alters the keys' texts and actions but not their
 * positions, so that the focus stays where it is. Screen thread only; KeyboardController owns it.
 */
class KeyList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created by KeyboardController.")
    Q_PROPERTY(int rows READ rows CONSTANT FINAL)
    Q_PROPERTY(int columns READ columns CONSTANT FINAL)

public:
    enum Role { CaptionRole = Qt::UserRole, TitleRole, RowRole, ColumnRole, SpanRole };

    using QAbstractListModel::QAbstractListModel;

    static constexpr int rows() { return KeyboardLayout::rows; }
    static constexpr int columns() { return KeyboardLayout::columns; }

    void setPage(KeyboardLayout::Page page);

    /** `row` must be a valid row of the model. */
    const KeyboardLayout::Key& key(int row) const { return m_keys.at(row); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    QList<KeyboardLayout::Key> m_keys = KeyboardLayout::keys(KeyboardLayout::Page::Letters);
};

} // namespace quillmere
