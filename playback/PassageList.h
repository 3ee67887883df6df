#pragma once

#include <QAbstractListModel>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

/** The passages of a transcript in their order. Screen thread only; its owner's. */
class PassageList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("It belongs to its screen's state.")

public:
    enum Role { TextRole = Qt::UserRole };

    using QAbstractListModel::QAbstractListModel;

    const QStringList& passages() const { return m_passages; }
    void setPassages(QStringList passages);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    QStringList m_passages;
};
