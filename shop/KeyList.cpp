#include "KeyList.h"

using namespace Qt::StringLiterals;

namespace quillmere {

void KeyList::setPage(KeyboardLayout::Page page)
{
    m_keys = KeyboardLayout::keys(page);
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

int KeyList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_keys.size());
}

QVariant KeyList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const KeyboardLayout::Key& key = m_keys.at(index.row());
    switch (role) {
    case CaptionRole:
        return key.caption;
    case TitleRole:
        return key.title;
    case RowRole:
        return key.row;
    case ColumnRole:
        return key.column;
    case SpanRole:
        return key.span;
    default:
        return {};
    }
}

QHash<int, QByteArray> KeyList::roleNames() const
{
    return {{CaptionRole, "caption"_ba},
            {TitleRole, "title"_ba},
            {RowRole, "row"_ba},
            {ColumnRole, "column"_ba},
            {SpanRole, "span"_ba}};
}

} // namespace quillmere
