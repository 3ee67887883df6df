#pragma once

#include "StackRows.h"

#include <QMap>
#include <QVariantMap>

#include <functional>

class QQmlComponent;
class QQuickItem;

/**
 * The items of a `LazyStack` that exist, by their rows. They are made on the stack, which owns them and this. Screen
 * thread only.
 */
class StackItems
{
public:
    explicit StackItems(QQuickItem& stack) : m_stack(stack) {}

    /** What an item takes from its row, by the names of those of its properties that are roles; and its `index`. */
    static QVariantMap values(const QQuickItem& item, const QAbstractItemModel* model, int row);

    int count() const { return int(m_items.size()); }
    bool has(int row) const { return m_items.contains(row); }
    QQuickItem* at(int row) const { return m_items.value(row); }

    /** The row of the item in which `descendant` stands, -1 when there is none. */
    int rowAround(const QQuickItem* descendant) const;

    /** Makes the item of a row, which is given its place by `layOut` and its values; answers whether it could. */
    bool make(int row, QQmlComponent& delegate, const QAbstractItemModel* model,
              const std::function<void(QQuickItem&, int)>& layOut);

    /** After a change of the model: those whose row is still there stay, and take its number, place and values. */
    void keep(const StackRows& before, const StackRows& after, const QAbstractItemModel* model,
              const std::function<void(QQuickItem&, int)>& layOut);

    void forEach(const std::function<void(QQuickItem&, int row)>& visit) const;

    void discardUnless(const std::function<bool(int row)>& isWanted);

private:
    static void discard(QQuickItem* item);

    QQuickItem& m_stack;
    QMap<int, QQuickItem*> m_items;
};
