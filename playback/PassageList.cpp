#include "PassageList.h"

void PassageList::setPassages(QStringList passages)
{
    reset(-1, [&] { m_passages = std::move(passages); });
}

int PassageList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_passages.size());
}

QVariant PassageList::data(const QModelIndex& index, int role) const
{
    return role == TextRole && checkIndex(index, CheckIndexOption::IndexIsValid) ? m_passages.at(index.row())
                                                                                 : QVariant();
}

QHash<int, QByteArray> PassageList::roleNames() const
{
    return {{TextRole, "text"}};
}
