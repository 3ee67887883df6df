#pragma once

#include "CurrentRowModel.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

/** The passages of a transcript, in order. Screen thread only; its controller owns it. */
class PassageList : public CurrentRowModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created by TranscriptController.")

public:
    enum Role { TextRole = Qt::UserRole };

    using CurrentRowModel::CurrentRowModel;

    const QStringList& passages() const { return m_passages; }
    void setPassages(QStringList passages);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    QStringList m_passages;
};
