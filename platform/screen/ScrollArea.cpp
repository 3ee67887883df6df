#include "ScrollArea.h"

#include "DevicePixels.h"

#include <QQuickWindow>

#include <algorithm>

namespace {

constexpr int shortestScrollTime = 80; // milliseconds

void appendContent(QQmlListProperty<QObject>* list, QObject* object)
{
    if (auto item = qobject_cast<QQuickItem*>(object))
        item->setParentItem(static_cast<ScrollArea*>(list->object)->contentItem());
}

} // namespace

ScrollArea::ScrollArea(QQuickItem* parent) : QQuickItem(parent), m_contentItem(new QQuickItem(this))
{
    m_motion.setStartValue(0.0);
    m_motion.setEndValue(1.0);
    m_motion.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_motion, &QVariantAnimation::valueChanged, this, [this](const QVariant& progress) {
        // Another duration changes the value of a motion that stands still too.
        if (m_motion.state() == QAbstractAnimation::Running)
            moveTo(m_from + (m_aim - m_from) * progress.toReal());
    });
}

ScrollArea::~ScrollArea() = default;

QQmlListProperty<QObject> ScrollArea::content()
{
    return {this, nullptr, appendContent, nullptr, nullptr, nullptr};
}

void ScrollArea::setOrientation(Qt::Orientation orientation)
{
    if (m_orientation == orientation)
        return;
    m_orientation = orientation;
    layOut();
    Q_EMIT orientationChanged();
}

void ScrollArea::setContentExtent(qreal extent)
{
    if (m_contentExtent == extent)
        return;
    m_contentExtent = extent;
    layOut();
    keepInSight(!m_isSeen);
    Q_EMIT contentExtentChanged();
}

void ScrollArea::setLead(qreal lead)
{
    if (m_lead == lead)
        return;
    m_lead = lead;
    keepInSight(!m_isSeen);
    Q_EMIT leadChanged();
}

void ScrollArea::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() == oldGeometry.size())
        return;
    layOut();
    keepInSight(true);
}

void ScrollArea::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        for (const auto& resize : std::as_const(m_resizes))
            disconnect(resize);
        m_resizes.clear();
        // The canvas takes another scale with another size of the window, and so whole pixels lie elsewhere.
        if (data.window)
            m_resizes << connect(data.window, &QWindow::widthChanged, this, &QQuickItem::polish)
                      << connect(data.window, &QWindow::heightChanged, this, &QQuickItem::polish);
        polish();
    } else if (change == ItemVisibleHasChanged && !data.boolValue) {
        go(m_aim, true);
    } else if (change == ItemDevicePixelRatioHasChanged) {
        polish();
    }
    QQuickItem::itemChange(change, data);
}

void ScrollArea::updatePolish()
{
    if (m_motion.state() != QAbstractAnimation::Running)
        go(m_aim, true);
    m_isSeen = true;
}

void ScrollArea::layOut()
{
    const bool isVertical = m_orientation == Qt::Vertical;
    m_contentItem->setSize(isVertical ? QSizeF(width(), m_contentExtent) : QSizeF(m_contentExtent, height()));
    m_contentItem->setPosition(isVertical ? QPointF(0, -m_position) : QPointF(-m_position, 0));
}

void ScrollArea::reveal(qreal first, qreal last, bool atOnce)
{
    m_revealed = Stretch{first, last};
    if (atOnce) {
        m_isSeen = false;
        polish();
    }
    keepInSight(atOnce);
}

void ScrollArea::keepInSight(bool atOnce)
{
    // Before there is any room, nothing can be said about where things would stand in it.
    if (viewExtent() > 0)
        go(m_revealed ? aimFor(*m_revealed) : m_aim, atOnce);
}

bool ScrollArea::scrollBy(qreal distance)
{
    const qreal before = m_aim;
    m_revealed.reset();
    go(m_aim + distance, false);
    return m_aim != before;
}

/** The aim nearest to the present one that has the stretch in sight, with as much lead as there is room for. */
qreal ScrollArea::aimFor(const Stretch& stretch) const
{
    const qreal spare = viewExtent() - (stretch.last - stretch.first);
    if (spare <= 0)
        return stretch.first;
    const qreal lead = std::min(m_lead, spare / 2);
    const qreal lowest = stretch.last + lead - viewExtent();
    const qreal highest = stretch.first - lead;
    return std::max(std::min(m_aim, highest), lowest);
}

void ScrollArea::go(qreal wish, bool atOnce)
{
    const qreal aim =
        onDevicePixels(*this, m_orientation, std::clamp(wish, 0.0, std::max(0.0, m_contentExtent - viewExtent())));
    const bool isNew = aim != m_aim;
    m_aim = aim;
    // An unseen area has nobody to follow a scroll.
    if (atOnce || !isVisible()) {
        m_motion.stop();
        moveTo(aim);
    } else if (isNew) {
        m_motion.stop();
        m_from = m_position;
        m_motion.setDuration(timeForNextScroll());
        m_motion.start();
    }
    if (isNew)
        Q_EMIT aimChanged();
}

/** Scrolls that follow closely on each other are shorter, so that a held arrow does not outrun what is in sight. */
int ScrollArea::timeForNextScroll()
{
    const qint64 since = m_sinceScroll.isValid() ? m_sinceScroll.elapsed() : scrollTime;
    m_sinceScroll.start();
    return int(std::clamp<qint64>(2 * since, shortestScrollTime, scrollTime));
}

void ScrollArea::moveTo(qreal position)
{
    const qreal whole = onDevicePixels(*this, m_orientation, position);
    if (whole == m_position)
        return;
    m_position = whole;
    layOut();
    Q_EMIT positionChanged();
}
