#include "PlacedListModel.h"

#include <QScopedValueRollback>

void PlacedListModel::setPlace(int row)
{
    if (m_isChanging || row == m_place || row < 0 || row >= rowCount())
        return;
    m_place = row;
    Q_EMIT placeChanged();
}

void PlacedListModel::setHasFocus(bool hasFocus)
{
    if (hasFocus == m_hasFocus)
        return;
    m_hasFocus = hasFocus;
    Q_EMIT hasFocusChanged();
}

void PlacedListModel::reset(int place, const std::function<void()>& change)
{
    const QScopedValueRollback changing(m_isChanging, true);
    beginResetModel();
    change();
    m_place = place;
    Q_EMIT placeChanged();
    endResetModel();
}
