#include "StackRows.h"

#include <QHash>

#include <algorithm>

namespace quillmere {

StackRows::StackRows(const QAbstractItemModel* model, qreal extent, qreal spacing)
{
    if (!model)
        return;
    const QHash<int, QByteArray> roles = model->roleNames();
    const int keyRole = roles.key("key", -1);
    const int extentRole = roles.key("extent", -1);
    const int count = model->rowCount();
    m_rows.reserve(count);
    QHash<QString, int> seen;
    qreal end = -spacing;
    for (int i = 0; i < count; ++i) {
        const QModelIndex index = model->index(i, 0);
        Row row;
        if (keyRole >= 0)
            row.identity.key = index.data(keyRole).toString();
        row.identity.occurrence = seen[row.identity.key]++;
        row.first = end + spacing;
        row.last = row.first + (extentRole >= 0 ? index.data(extentRole).toReal() : extent);
        end = row.last;
        m_rows.append(row);
    }
}

bool StackRows::setExtent(int row, qreal extent)
{
    const qreal more = extent - (m_rows.at(row).last - m_rows.at(row).first);
    if (more == 0)
        return false;
    m_rows[row].last += more;
    for (auto after = m_rows.begin() + row + 1; after != m_rows.end(); ++after) {
        after->first += more;
        after->last += more;
    }
    return true;
}

StackRows::Span StackRows::between(qreal from, qreal to) const
{
    const auto begin =
        std::partition_point(m_rows.cbegin(), m_rows.cend(), [from](const Row& row) { return row.last <= from; });
    const auto end =
        std::partition_point(m_rows.cbegin(), m_rows.cend(), [to](const Row& row) { return row.first < to; });
    return {int(begin - m_rows.cbegin()), int(end - m_rows.cbegin()) - 1};
}

} // namespace quillmere
