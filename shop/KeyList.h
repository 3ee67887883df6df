#pragma once

#include "KeyboardLayout.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

/**
 * The keys of the on-screen keyboard. Another page changes what they say and do, not where they stand, so that the focus
 * stays where it is. Screen thread only; whoever made it owns it.
 */
class KeyList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The keyboard's controller makes it.")
    Q_PROPERTY(int rows READ rows CONSTANT FINAL)
    Q_PROPERTY(int columns READ columns CONSTANT FINAL)

public:
    enum Role { CaptionRole = Qt::UserRole, TitleRole, RowRole, ColumnRole, SpanRole };

    using QAbstractListModel::QAbstractListModel;

    static constexpr int rows() { return KeyboardLayout::rows; }
    static constexpr int columns() { return KeyboardLayout::columns; }

    void show(KeyboardLayout::Page page);

    /** `row` is one of the model's. */
    const KeyboardLayout::Key& key(int row) const { return m_keys.at(row); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    QList<KeyboardLayout::Key> m_keys = KeyboardLayout::keys(KeyboardLayout::Page::Letters);
};
