#pragma once

#include <Qt>

class QQuickItem;

/**
 * Rounds `length`, in points of `item` along `orientation`, to a whole number of device pixels. Art that is moved by
 * such lengths stays sharp. Screen thread only.
 */
qreal snapToDevicePixels(const QQuickItem& item, Qt::Orientation orientation, qreal length);
