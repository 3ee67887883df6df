#include "StackItems.h"

#include "MadeItem.h"

#include <QQmlProperty>
#include <QQuickItem>

QVariantMap StackItems::values(const QQuickItem& item, const QAbstractItemModel* model, int row)
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

int StackItems::rowAround(const QQuickItem* descendant) const
{
    const QQuickItem* item = descendant;
    while (item && item->parentItem() != &m_stack)
        item = item->parentItem();
    return item ? m_items.key(const_cast<QQuickItem*>(item), -1) : -1;
}

bool StackItems::make(int row, QQmlComponent& delegate, const QAbstractItemModel* model,
                      const std::function<void(QQuickItem&, int)>& layOut)
{
    QQuickItem* begun = nullptr;
    const auto begin = [&](QQuickItem& item) {
        // It is known from the beginning: the model may change while it is made.
        begun = &item;
        m_items.insert(row, begun);
        layOut(item, row);
        return values(item, model, row);
    };
    if (madeItem(delegate, m_stack, begin))
        return true;
    m_items.removeIf([begun](const auto& item) { return item.value() == begun; });
    return false;
}

void StackItems::keep(const StackRows& before, const StackRows& after, const QAbstractItemModel* model,
                      const std::function<void(QQuickItem&, int)>& layOut)
{
    QHash<StackRows::Identity, QQuickItem*> left;
    for (auto i = m_items.cbegin(); i != m_items.cend(); ++i)
        left.insert(before.at(i.key()).identity, i.value());
    m_items.clear();
    for (int row = 0; row < after.count() && !left.isEmpty(); ++row) {
        if (QQuickItem* item = left.take(after.at(row).identity))
            m_items.insert(row, item);
    }
    for (QQuickItem* item : std::as_const(left))
        discard(item);
    forEach([&](QQuickItem& item, int row) {
        layOut(item, row);
        const QVariantMap fresh = values(item, model, row);
        for (auto value = fresh.cbegin(); value != fresh.cend(); ++value)
            QQmlProperty::write(&item, value.key(), value.value());
    });
}

void StackItems::forEach(const std::function<void(QQuickItem&, int)>& visit) const
{
    const auto items = m_items;
    for (auto i = items.cbegin(); i != items.cend(); ++i) {
        // What is done to one may change the model once more.
        if (at(i.key()) == i.value())
            visit(*i.value(), i.key());
    }
}

void StackItems::discardUnless(const std::function<bool(int)>& isWanted)
{
    for (auto i = m_items.begin(); i != m_items.end();) {
        const bool stays = isWanted(i.key());
        if (!stays)
            discard(i.value());
        i = stays ? std::next(i) : m_items.erase(i);
    }
}

void StackItems::discard(QQuickItem* item)
{
    // Not destroyed here: it may be in the middle of telling that it was selected.
    item->setVisible(false);
    item->deleteLater();
}
