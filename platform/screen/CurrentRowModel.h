#pragma once

#include <QAbstractListModel>
#include <QtQml/qqml.h>

#include <functional>

namespace quillmere {

/** Describes the base class of QAbstractListModel to qmllint, which cannot check CurrentRowModel without it. */
struct AbstractItemModelForQml
{
    Q_GADGET
    QML_FOREIGN(QAbstractItemModel)
    QML_ANONYMOUS
};

/**
 * A list model with a current row: the row whose item in the `LazyStack` has or last had the focus. New rows and their
 * current row are set in one model reset, so that the stack never uses a row number of the old rows. Screen thread
 * only.
 */
class CurrentRowModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Only lists that are derived from it have rows.")
    Q_PROPERTY(int currentRow READ currentRow NOTIFY currentRowChanged FINAL)

public:
    using QAbstractListModel::QAbstractListModel;

    /** -1 if there is none yet. */
    int currentRow() const { return m_currentRow; }
    /** Ignores a row that does not exist, and every row during a reset, which sets the new one. */
    void setCurrentRow(int row);
    /** Whether the focused item of the screen is in the list, also while another screen has the keys. */
    bool hasFocus() const { return m_hasFocus; }
    /** Set by the LazyStack. */
    void setHasFocus(bool hasFocus);

Q_SIGNALS:
    void currentRowChanged();
    void hasFocusChanged();

protected:
    /** Resets the model: `change` replaces the rows, then `currentRow` becomes the current row. */
    void reset(int currentRow, const std::function<void()>& change);

private:
    int m_currentRow = -1;
    bool m_hasFocus = false;
    bool m_isResetting = false;
};

} // namespace quillmere
