#pragma once

#include <Qt>

class QQuickItem;

/**
 * `length`, in points of `item` along `orientation`, rounded so that it is a whole number of device pixels. What moves by
 * such lengths stays as sharp as it is. Screen thread only.
 */
qreal onDevicePixels(const QQuickItem& item, Qt::Orientation orientation, qreal length);
