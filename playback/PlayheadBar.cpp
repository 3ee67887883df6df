#include "PlayheadBar.h"

#include "StationPalette.h"

#include <QPainter>

#include <algorithm>

namespace quillmere {

namespace {

// Points.
constexpr double barHeight = 12;
constexpr QSizeF head{12, 36};
constexpr QSizeF scrubbingHead{16, 48};
constexpr double headRim = 3; // separates the head from the played part and from a bright picture

constexpr double trackOpacity = 0.25;
constexpr double bufferedOpacity = 0.5;

} // namespace

PlayheadBar::PlayheadBar(QQuickItem* parent) : PaintedItem(parent)
{
    setImplicitHeight(barHeight);
}

qreal PlayheadBar::bleed() const
{
    return (scrubbingHead.height() - barHeight) / 2 + headRim;
}

void PlayheadBar::paint(QPainter& painter, const QSizeF& size) const
{
    const double radius = size.height() / 2;
    const double playhead = m_played * size.width();
    painter.setPen(Qt::NoPen);

    const auto fill = [&](double to, const QColor& color) {
        painter.setClipRect(QRectF(0, 0, to, size.height()));
        painter.setBrush(color);
        painter.drawRoundedRect(QRectF(QPointF(), size), radius, radius);
    };
    const QColor cream = StationPalette::cream();
    fill(size.width(), StationPalette::faded(cream, trackOpacity));
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    fill(std::max(m_buffered, m_played) * size.width(), StationPalette::faded(cream, bufferedOpacity));
    fill(playhead, StationPalette::amber());
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setClipping(false);

    const QSizeF shape = m_scrubbing ? scrubbingHead : head;
    const QRectF area(QPointF(playhead - shape.width() / 2, radius - shape.height() / 2), shape);
    const QRectF rim = area.marginsAdded({headRim, headRim, headRim, headRim});
    painter.setBrush(StationPalette::inkNavy());
    painter.drawRoundedRect(rim, rim.width() / 2, rim.width() / 2);
    painter.setBrush(cream);
    painter.drawRoundedRect(area, shape.width() / 2, shape.width() / 2);
}

} // namespace quillmere
