#pragma once

#include <QVariantMap>

#include <functional>

class QQmlComponent;
class QQuickItem;

namespace quillmere {

/**
 * Creates an item from `component` as a child of `parent`, which owns it. Returns null, after a warning, if that fails.
 * `initialize` is called before the item's bindings are evaluated; it returns the initial properties. Screen thread
 * only.
 */
QQuickItem* createItem(QQmlComponent& component, QQuickItem& parent,
                       const std::function<QVariantMap(QQuickItem& item)>& initialize);

} // namespace quillmere
