#include "CurrentRowModel.h"

#include <QScopedValueRollback>

namespace quillmere {

void CurrentRowModel::setCurrentRow(int row)
{
    if (m_isResetting || row == m_currentRow || row < 0 || row >= rowCount())
        return;
    m_currentRow = row;
    Q_EMIT currentRowChanged();
}

void CurrentRowModel::setHasFocus(bool hasFocus)
{
    if (hasFocus == m_hasFocus)
        return;
    m_hasFocus = hasFocus;
    Q_EMIT hasFocusChanged();
}

void CurrentRowModel::reset(int currentRow, const std::function<void()>& change)
{
    const bool isNew = currentRow != m_currentRow;
    {
        const QScopedValueRollback resetting(m_isResetting, true);
        beginResetModel();
        change();
        m_currentRow = currentRow;
        endResetModel();
    }
    if (isNew)
        Q_EMIT currentRowChanged();
}

} // namespace quillmere
