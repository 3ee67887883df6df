#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/** One fact about a tape, shown as a row on its screen. */
struct TapeFact
{
    QString label; ///< in capitals
    QString value;

    bool operator==(const TapeFact&) const = default;
};

/** List model of the facts about a tape. Screen thread only; TapeDetailController owns it. */
class FactList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created by TapeDetailController.")

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

} // namespace quillmere
