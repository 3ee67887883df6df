#include "LampDisc.h"

#include "StationPalette.h"

#include <QPainter>

namespace quillmere {

namespace {

constexpr double rimWidth = 2; // points
constexpr double rimOpacity = 0.35;

} // namespace

void LampDisc::paint(QPainter& painter, const QSizeF& size) const
{
    const QRectF disc(QPointF(), size);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_live ? StationPalette::onAirRed() : StationPalette::soot());
    painter.drawEllipse(disc);
    painter.setPen(QPen(StationPalette::faded(StationPalette::parchment(), rimOpacity), rimWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(disc.marginsRemoved({rimWidth / 2, rimWidth / 2, rimWidth / 2, rimWidth / 2}));
}

} // namespace quillmere
