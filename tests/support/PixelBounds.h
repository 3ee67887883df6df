#pragma once

#include <QRect>

namespace quillmere {

/** The bounding rectangle of the pixels in `area` for whose position `isPart` is true. */
template<typename Predicate>
QRect boundsOfPixels(const QRect& area, Predicate isPart)
{
    QRect bounds;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (isPart(QPoint(x, y)))
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

} // namespace quillmere
