#include "ApplicationIcon.h"

#include "CardPlate.h"
#include "LampDisc.h"
#include "MiniColorBars.h"
#include "SpineShelf.h"
#include "StationPalette.h"
#include "VeneerBackground.h"

#include <QPainter>

namespace quillmere {

namespace {

// Geometry in points.
constexpr QRectF cabinet(8, 8, 240, 240);
constexpr double cabinetRadius = 48;
constexpr QRectF television(32, 36, 192, 132);
constexpr double televisionRadius = 18;
constexpr double barsMargin = 16;
constexpr QRectF shelf(36, 184, 132, 44);
constexpr QRectF lamp(184, 188, 36, 36);
constexpr double barsOpacity = 0.85;

void paintCabinet(QPainter& painter)
{
    const QRectF veneer(QPointF(), cabinet.size());
    const QPainterPath outline = CardPlate::continuousOutline(veneer, cabinetRadius);
    painter.translate(cabinet.topLeft());
    painter.fillPath(outline, VeneerBackground::wood(veneer.size()));
    for (const VeneerBackground::Streak& streak : VeneerBackground::grain(veneer.width())) {
        QPainterPath line;
        line.addRect(streak.x, 0, streak.width, veneer.height());
        painter.fillPath(line.intersected(outline), StationPalette::faded(Qt::black, streak.opacity));
    }
}

void paintTelevision(QPainter& painter)
{
    QLinearGradient glass(television.topLeft(), television.bottomRight());
    glass.setColorAt(0, QColor(42, 39, 35));
    glass.setColorAt(1, QColor(20, 18, 15));
    QPainterPath frame;
    frame.addRoundedRect(television, televisionRadius, televisionRadius);
    painter.fillPath(frame, glass);

    const QRectF area = television.marginsRemoved({barsMargin, barsMargin, barsMargin, barsMargin});
    MiniColorBars bars;
    bars.setBars(StationPalette::colorBars());
    painter.translate(area.topLeft());
    painter.setOpacity(barsOpacity);
    bars.paint(painter, area.size());
}

void paintShelf(QPainter& painter)
{
    const double scale = shelf.height() / SpineShelf::height;
    painter.translate(shelf.topLeft());
    painter.scale(scale, scale);
    SpineShelf().paint(painter, shelf.size() / scale);
}

void paintLamp(QPainter& painter)
{
    LampDisc disc;
    disc.setLive(true);
    painter.translate(lamp.topLeft());
    disc.paint(painter, lamp.size());
}

} // namespace

void ApplicationIcon::paint(QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto part : {paintCabinet, paintTelevision, paintShelf, paintLamp}) {
        painter.save();
        part(painter);
        painter.restore();
    }
}

} // namespace quillmere
