#include "Marquee.h"

#include "DevicePixels.h"
#include "FrameCallback.h"

#include <algorithm>

namespace quillmere {

Marquee::Marquee(QQuickItem* parent)
    : QQuickItem(parent), m_frameCallback(std::make_unique<FrameCallback>([this] { onFrame(); }))
{
    for (const auto changed :
         {&Marquee::clockChanged, &Marquee::textChanged, &Marquee::textWidthChanged, &Marquee::runningChanged})
        connect(this, changed, this, &Marquee::restart);
}

Marquee::~Marquee() = default;

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
    m_frameCallback->stop();
    m_pauseTimer.reset();
    const bool showsFullText = m_running && m_clock && isVisible() && overflow() > 0;
    if (showsFullText != m_showsFullText) {
        m_showsFullText = showsFullText;
        setClip(showsFullText);
        Q_EMIT showsFullTextChanged();
    }
    moveTo(0);
    if (showsFullText)
        beginCycle();
}

void Marquee::beginCycle()
{
    moveTo(0);
    m_pauseTimer = m_clock->after(startPause, [this] {
        m_start = m_clock->elapsed();
        m_frameCallback->start();
    });
}

/** Called once a frame while the text moves. */
void Marquee::onFrame()
{
    if (!m_clock)
        return;
    const std::chrono::duration<double> moving = m_clock->elapsed() - m_start;
    const double travelled = std::min(speed * moving.count(), overflow());
    moveTo(travelled);
    if (travelled < overflow())
        return;
    m_frameCallback->stop();
    m_pauseTimer = m_clock->after(endPause, [this] { beginCycle(); });
}

void Marquee::moveTo(double travelled)
{
    // A right-to-left text begins at its right end.
    const double begin = m_showsFullText && m_text.isRightToLeft() ? -overflow() : 0;
    const double offset = snapToDevicePixels(*this, Qt::Horizontal, begin < 0 ? begin + travelled : -travelled);
    if (offset == m_offset)
        return;
    m_offset = offset;
    Q_EMIT offsetChanged();
}

} // namespace quillmere
