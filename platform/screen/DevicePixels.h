#pragma once

#include <QPointF>
#include <QSizeF>
#include <Qt>

class QQuickItem;

namespace quillmere {

/** Position and scale of an item on the device. Rotation and shear are ignored. A value. */
struct DevicePixels
{
    /** Screen thread, or render thread while the screen thread is blocked. */
    explicit DevicePixels(const QQuickItem& item);

    QPointF origin; ///< of the item, in device pixels
    QSizeF scale;   ///< device pixels per point
};

/**
 * Rounds `length`, in points of `item` along `orientation`, to a whole number of device pixels. Art that is moved by
 * such lengths stays sharp. Screen thread only.
 */
qreal snapToDevicePixels(const QQuickItem& item, Qt::Orientation orientation, qreal length);

} // namespace quillmere
