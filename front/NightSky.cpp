#include "NightSky.h"

#include "StationPalette.h"

#include <QPainter>

namespace quillmere {

void NightSky::paint(QPainter& painter, const QSizeF& size) const
{
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, StationPalette::inkNavy());
    sky.setColorAt(1, QColor(5, 7, 15));
    painter.fillRect(QRectF(QPointF(), size), sky);
}

} // namespace quillmere
