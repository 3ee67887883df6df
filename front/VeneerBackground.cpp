#include "VeneerBackground.h"

#include "StationPalette.h"

#include <QPainter>

namespace quillmere {

QLinearGradient VeneerBackground::wood(const QSizeF& size)
{
    QLinearGradient wood(0, 0, size.width(), size.height());
    wood.setColorAt(0, StationPalette::chestnut());
    wood.setColorAt(0.5, StationPalette::walnut());
    wood.setColorAt(1, QColor(74, 51, 39));
    return wood;
}

void VeneerBackground::paint(QPainter& painter, const QSizeF& size) const
{
    painter.fillRect(QRectF(QPointF(), size), wood(size));

    // The grain is the same in every row of pixels, so one row is painted and tiled over all.
    const QTransform toDevice = painter.deviceTransform();
    const QRectF area = toDevice.mapRect(QRectF(QPointF(), size));
    const QRect pixels = area.toAlignedRect();
    QImage row(pixels.width(), 1, QImage::Format_ARGB32_Premultiplied);
    row.fill(Qt::transparent);
    QPainter rowPainter(&row);
    rowPainter.setRenderHints(painter.renderHints());
    rowPainter.translate(area.left() - pixels.left(), 0);
    rowPainter.scale(toDevice.m11(), 1);
    for (const Streak& streak : grain(size.width())) {
        const QRectF part(streak.x, 0, std::min(streak.width, size.width() - streak.x), 1);
        rowPainter.fillRect(part, StationPalette::faded(Qt::black, streak.opacity));
    }
    rowPainter.end();
    painter.save();
    painter.resetTransform();
    painter.setBrushOrigin(pixels.topLeft());
    painter.fillRect(area, QBrush(row));
    painter.restore();
}

QList<VeneerBackground::Streak> VeneerBackground::grain(double width)
{
    QList<Streak> streaks;
    quint32 state = 0x9E3779B9;
    double x = 0;
    while (x < width) {
        state = state * 1664525 + 1013904223;
        const quint32 a = state % 3;
        const quint32 b = state % 5;
        const quint32 c = state % 7;
        streaks.append({x, a + 1.0, c / 100.0 + 0.03});
        x += a + b + 3;
    }
    return streaks;
}

} // namespace quillmere
