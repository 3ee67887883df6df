#include "FactList.h"

namespace quillmere {

void FactList::setFacts(QList<TapeFact> facts)
{
    beginResetModel();
    m_facts = std::move(facts);
    endResetModel();
}

int FactList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_facts.size());
}

QVariant FactList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const TapeFact& fact = m_facts.at(index.row());
    switch (role) {
    case LabelRole:
        return fact.label;
    case ValueRole:
        return fact.value;
    default:
        return {};
    }
}

QHash<int, QByteArray> FactList::roleNames() const
{
    return {{LabelRole, "label"}, {ValueRole, "value"}};
}

} // namespace quillmere
