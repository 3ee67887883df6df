#include "Marquee.h"

#include "DevicePixels.h"
#include "EveryFrame.h"

#include <algorithm>

Marquee::Marquee(QQuickItem* parent) : QQuickItem(parent), m_frames(std::make_unique<EveryFrame>([this] { advance(); }))
{
    for (const auto changed :
         {&Marquee::timepieceChanged, &Marquee::textChanged, &Marquee::textExtentChanged, &Marquee::runningChanged})
        connect(this, changed, this, &Marquee::restart);
}

Marquee::~Marquee() = default;

void Marquee::setTimepiece(Timepiece* timepiece)
{
    if (m_timepiece == timepiece)
        return;
    m_timepiece = timepiece;
    Q_EMIT timepieceChanged();
}

void Marquee::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemVisibleHasChanged)
        restart();
    QQuickItem::itemChange(change, data);
}

void Marquee::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width())
        restart();
}

void Marquee::restart()
{
    m_frames->stop();
    m_rest.reset();
    const bool showsWhole = m_running && m_timepiece && isVisible() && overflow() > 0;
    if (showsWhole != m_showsWhole) {
        m_showsWhole = showsWhole;
        setClip(showsWhole);
        Q_EMIT showsWholeChanged();
    }
    moveTo(0);
    if (showsWhole)
        beginRound();
}

void Marquee::beginRound()
{
    moveTo(0);
    m_rest = m_timepiece->clock().after(beginTime, [this] {
        m_start = m_timepiece->clock().elapsed();
        m_frames->start();
    });
}

/** Once a frame, while it moves. */
void Marquee::advance()
{
    if (!m_timepiece)
        return;
    const std::chrono::duration<double> moving = m_timepiece->clock().elapsed() - m_start;
    const double travelled = std::min(speed * moving.count(), overflow());
    moveTo(travelled);
    if (travelled < overflow())
        return;
    m_frames->stop();
    m_rest = m_timepiece->clock().after(endTime, [this] { beginRound(); });
}

void Marquee::moveTo(double travelled)
{
    // A text that is read from right to left begins at its right end.
    const double begin = m_showsWhole && m_text.isRightToLeft() ? -overflow() : 0;
    const double offset = onDevicePixels(*this, Qt::Horizontal, begin < 0 ? begin + travelled : -travelled);
    if (offset == m_offset)
        return;
    m_offset = offset;
    Q_EMIT offsetChanged();
}
