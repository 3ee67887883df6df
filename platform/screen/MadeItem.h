#pragma once

#include <QVariantMap>

#include <functional>

class QQmlComponent;
class QQuickItem;

/**
 * The item that `component` makes on `parent`, which owns it; null, after a warning, when it makes none. `begin` is called
 * before the item's bindings run and answers with the properties that it is to begin with. Screen thread only.
 */
QQuickItem* madeItem(QQmlComponent& component, QQuickItem& parent,
                     const std::function<QVariantMap(QQuickItem& item)>& begin);
