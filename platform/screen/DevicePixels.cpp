#include "DevicePixels.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <cmath>

qreal snapToDevicePixels(const QQuickItem& item, Qt::Orientation orientation, qreal length)
{
    const QTransform toScene = item.itemTransform(nullptr, nullptr);
    const qreal scale = orientation == Qt::Vertical ? toScene.m22() : toScene.m11();
    const qreal pixels = scale * (item.window() ? item.window()->effectiveDevicePixelRatio() : 1.0);
    return pixels > 0 ? std::round(length * pixels) / pixels : length;
}
