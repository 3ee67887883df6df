#include "DevicePixels.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <cmath>

namespace quillmere {

DevicePixels::DevicePixels(const QQuickItem& item)
{
    const QTransform toScene = item.itemTransform(nullptr, nullptr);
    const double ratio = item.window() ? item.window()->effectiveDevicePixelRatio() : 1.0;
    origin = toScene.map(QPointF()) * ratio;
    scale = QSizeF(toScene.m11(), toScene.m22()) * ratio;
}

qreal snapToDevicePixels(const QQuickItem& item, Qt::Orientation orientation, qreal length)
{
    const QSizeF scale = DevicePixels(item).scale;
    const qreal pixels = orientation == Qt::Vertical ? scale.height() : scale.width();
    return pixels > 0 ? std::round(length * pixels) / pixels : length;
}

} // namespace quillmere
