#pragma once

#include "TapeFact.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

/** What is known of a tape, row by row, for its screen. Screen thread only; whoever made it owns it. */
class FactList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The tape's controller makes it.")

public:
    enum Role { LabelRole = Qt::UserRole, ValueRole };

    using QAbstractListModel::QAbstractListModel;

    void setFacts(QList<TapeFact> facts);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    QList<TapeFact> m_facts;
};
