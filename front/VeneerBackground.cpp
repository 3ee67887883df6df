#include "VeneerBackground.h"

#include "StationPalette.h"

#include <QPainter>

void VeneerBackground::paint(QPainter& painter, const QSizeF& size) const
{
    QLinearGradient wood(0, 0, size.width(), size.height());
    wood.setColorAt(0, StationPalette::chestnut());
    wood.setColorAt(0.5, StationPalette::walnut());
    wood.setColorAt(1, QColor(74, 51, 39));
    painter.fillRect(QRectF(QPointF(), size), wood);

    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    for (const Streak& streak : grain(size.width())) {
        const QRectF area(streak.x, 0, std::min(streak.width, size.width() - streak.x), size.height());
        painter.fillRect(area, StationPalette::faded(Qt::black, streak.opacity));
    }
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
