#include "StackItems.h"

#include "CreateItem.h"

#include <QQmlProperty>
#include <QQuickItem>

namespace quillmere {

QVariantMap StackItems::propertyValues(const QQuickItem& item, const QAbstractItemModel* model, int row)
{
    const auto has = [&item](const char* name) { return item.metaObject()->indexOfProperty(name) >= 0; };
    QVariantMap values;
    if (has("index"))
        values.insert(QStringLiteral("index"), row);
    const auto names = model ? model->roleNames() : QHash<int, QByteArray>();
    for (auto role = names.cbegin(); role != names.cend(); ++role) {
        if (has(role.value()))
            values.insert(QString::fromUtf8(role.value()), model->index(row, 0).data(role.key()));
    }
    return values;
}

int StackItems::rowContaining(const QQuickItem* descendant) const
{
    const QQuickItem* item = descendant;
    while (item && item->parentItem() != &m_stack)
        item = item->parentItem();
    return item ? m_items.key(const_cast<QQuickItem*>(item), -1) : -1;
}

bool StackItems::create(int row, QQmlComponent& delegate, const QAbstractItemModel* model,
                        const std::function<void(QQuickItem&, int)>& layOut)
{
    QQuickItem* created = nullptr;
    const auto initialize = [&](QQuickItem& item) {
        // Added before creation is complete: the model may change meanwhile.
        created = &item;
        m_items.insert(row, created);
        layOut(item, row);
        return propertyValues(item, model, row);
    };
    if (createItem(delegate, m_stack, initialize))
        return true;
    m_items.removeIf([created](const auto& item) { return item.value() == created; });
    return false;
}

void StackItems::updateRows(const StackRows& before, const StackRows& after, const QAbstractItemModel* model,
                            const std::function<void(QQuickItem&, int)>& layOut)
{
    QHash<StackRows::Identity, QQuickItem*> remaining;
    for (auto i = m_items.cbegin(); i != m_items.cend(); ++i)
        remaining.insert(before.at(i.key()).identity, i.value());
    m_items.clear();
    for (int row = 0; row < after.count() && !remaining.isEmpty(); ++row) {
        if (QQuickItem* item = remaining.take(after.at(row).identity))
            m_items.insert(row, item);
    }
    for (QQuickItem* item : std::as_const(remaining))
        discard(item);
    forEach([&](QQuickItem& item, int row) {
        layOut(item, row);
        const QVariantMap values = propertyValues(item, model, row);
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            QQmlProperty::write(&item, value.key(), value.value());
    });
}

void StackItems::forEach(const std::function<void(QQuickItem&, int)>& visit) const
{
    const auto items = m_items;
    for (auto i = items.cbegin(); i != items.cend(); ++i) {
        // The visitor may change the model, and so the items.
        if (at(i.key()) == i.value())
            visit(*i.value(), i.key());
    }
}

void StackItems::discardUnless(const std::function<bool(int)>& isWanted)
{
    for (auto i = m_items.begin(); i != m_items.end();) {
        const bool isKept = isWanted(i.key());
        if (!isKept)
            discard(i.value());
        i = isKept ? std::next(i) : m_items.erase(i);
    }
}

void StackItems::discard(QQuickItem* item)
{
    // Deleted later: it may be emitting `selected` now.
    item->setVisible(false);
    item->deleteLater();
}

} // namespace quillmere
