#include "CreateItem.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQuickItem>

namespace quillmere {

QQuickItem* createItem(QQmlComponent& component, QQuickItem& parent,
                       const std::function<QVariantMap(QQuickItem& item)>& initialize)
{
    QQmlContext* const context = component.creationContext();
    QObject* const object = component.beginCreate(context ? context : qmlContext(&parent));
    auto* const item = qobject_cast<QQuickItem*>(object);
    if (item) {
        item->setParent(&parent);
        item->setParentItem(&parent);
        component.setInitialProperties(item, initialize(*item));
    }
    if (object)
        component.completeCreate();
    if (item && !component.isError())
        return item;
    qWarning("nothing can be shown: %s", object && !item ? "not an item" : qPrintable(component.errorString()));
    if (item)
        item->setVisible(false);
    if (object)
        object->deleteLater();
    return nullptr;
}

} // namespace quillmere
