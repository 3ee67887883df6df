#pragma once

#include "StackRows.h"

#include <QMap>
#include <QVariantMap>

#include <functional>

class QQmlComponent;
class QQuickItem;

namespace quillmere {

/**
 * The existing delegate items of a `LazyStack`, by row. Their parent and owner is the stack, which also owns this
 * object. Screen thread only.
 */
class StackItems
{
public:
    explicit StackItems(QQuickItem& stack) : m_stack(stack) {}

    /** The values for an item's properties that are named like roles, and for its property `index`. */
    static QVariantMap propertyValues(const QQuickItem& item, const QAbstractItemModel* model, int row);

    int count() const { return int(m_items.size()); }
    bool has(int row) const { return m_items.contains(row); }
    QQuickItem* at(int row) const { return m_items.value(row); }

    /** The row of the item that contains `descendant`; -1 if none. */
    int rowContaining(const QQuickItem* descendant) const;

    /** Creates the item of a row; `layOut` sets its position. Returns whether that succeeded. */
    bool create(int row, QQmlComponent& delegate, const QAbstractItemModel* model,
                const std::function<void(QQuickItem&, int)>& layOut);

    /**
     * Updates all items after a model change: items of remaining rows get new row numbers, positions and values; the
     * others are discarded.
     */
    void updateRows(const StackRows& before, const StackRows& after, const QAbstractItemModel* model,
                    const std::function<void(QQuickItem&, int)>& layOut);

    void forEach(const std::function<void(QQuickItem&, int row)>& visit) const;

    void discardUnless(const std::function<bool(int row)>& isWanted);

private:
    static void discard(QQuickItem* item);

    QQuickItem& m_stack;
    QMap<int, QQuickItem*> m_items;
};

} // namespace quillmere
