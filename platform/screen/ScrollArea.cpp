#include "ScrollArea.h"

#include "DevicePixels.h"
#include "FocusScreen.h"
#include "FocusSection.h"
#include "FocusTargets.h"

#include <QQuickWindow>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int minScrollDuration = 80; // milliseconds

void appendContent(QQmlListProperty<QObject>* list, QObject* object)
{
    if (auto item = qobject_cast<QQuickItem*>(object))
        item->setParentItem(static_cast<ScrollArea*>(list->object)->contentItem());
}

} // namespace

ScrollArea::ScrollArea(QQuickItem* parent) : QQuickItem(parent), m_contentItem(new QQuickItem(this))
{
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    m_animation.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& progress) {
        // Setting the duration emits valueChanged also while the animation is stopped.
        if (m_animation.state() == QAbstractAnimation::Running)
            moveTo(m_startPosition + (m_targetPosition - m_startPosition) * progress.toReal());
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
    updateContentItem();
    Q_EMIT orientationChanged();
}

void ScrollArea::setContentExtent(qreal extent)
{
    if (m_contentExtent == extent)
        return;
    m_contentExtent = extent;
    updateContentItem();
    keepVisible(!m_isDrawn);
    Q_EMIT contentExtentChanged();
}

void ScrollArea::setRevealMargin(qreal margin)
{
    if (m_revealMargin == margin)
        return;
    m_revealMargin = margin;
    keepVisible(!m_isDrawn);
    Q_EMIT revealMarginChanged();
}

void ScrollArea::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() == oldGeometry.size())
        return;
    updateContentItem();
    keepVisible(true);
}

void ScrollArea::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        for (const auto& connection : std::as_const(m_windowConnections))
            disconnect(connection);
        m_windowConnections.clear();
        // Resizing the window changes the canvas's scale, and so the positions of whole device pixels.
        if (data.window)
            m_windowConnections << connect(data.window, &QWindow::widthChanged, this, &QQuickItem::polish)
                                << connect(data.window, &QWindow::heightChanged, this, &QQuickItem::polish);
        polish();
    } else if (change == ItemVisibleHasChanged && !data.boolValue) {
        scrollTo(m_targetPosition, true);
    } else if (change == ItemDevicePixelRatioHasChanged) {
        polish();
    }
    QQuickItem::itemChange(change, data);
}

void ScrollArea::updatePolish()
{
    if (m_animation.state() != QAbstractAnimation::Running)
        scrollTo(m_targetPosition, true);
    m_isDrawn = true;
}

void ScrollArea::updateContentItem()
{
    const bool isVertical = m_orientation == Qt::Vertical;
    m_contentItem->setSize(isVertical ? QSizeF(width(), m_contentExtent) : QSizeF(m_contentExtent, height()));
    m_contentItem->setPosition(isVertical ? QPointF(0, -m_position) : QPointF(-m_position, 0));
}

void ScrollArea::reveal(qreal first, qreal last, bool immediately)
{
    m_revealedRange = Range{first, last};
    m_revealedItem = nullptr;
    if (immediately) {
        m_isDrawn = false;
        polish();
    }
    keepVisible(immediately);
}

void ScrollArea::onFocusInside(Focusable& focused, bool immediately)
{
    const Range range = rangeOf(focused);
    reveal(range.first, range.last, immediately);
    m_revealedItem = &focused;
}

/** The range of a focused item, or of its section if that is in this area and fits. */
ScrollArea::Range ScrollArea::rangeOf(const Focusable& focused) const
{
    const auto rangeOfItem = [this](const QQuickItem& item) {
        const QRectF rect = restingRect(item, m_contentItem);
        return m_orientation == Qt::Vertical ? Range{rect.top(), rect.bottom()} : Range{rect.left(), rect.right()};
    };
    const FocusSection* const section = FocusSection::enclosingSection(&focused);
    if (section && isAncestorOf(section)) {
        const Range range = rangeOfItem(*section);
        if (range.last - range.first <= viewExtent())
            return range;
    }
    return rangeOfItem(focused);
}

/** Scrolls back to what was revealed, after a change of the content or of the viewport. */
void ScrollArea::keepVisible(bool immediately)
{
    // Outside a window the screen may be half destroyed, and must not be called.
    const FocusScreen* const screen =
        m_revealedItem && window() ? FocusScreen::enclosingScreen(m_revealedItem) : nullptr;
    if (screen && screen->focused() == m_revealedItem && m_revealedItem->isFocusable() && isAncestorOf(m_revealedItem))
        m_revealedRange = rangeOf(*m_revealedItem);
    // With an empty viewport no position can be computed.
    if (viewExtent() > 0)
        scrollTo(m_revealedRange ? targetPositionFor(*m_revealedRange) : m_targetPosition, immediately);
}

bool ScrollArea::scrollBy(qreal distance)
{
    const qreal before = m_targetPosition;
    m_revealedRange.reset();
    m_revealedItem = nullptr;
    scrollTo(m_targetPosition + distance, false);
    return m_targetPosition != before;
}

/** The target position nearest to the current one at which the range is visible, with margin as far as it fits. */
qreal ScrollArea::targetPositionFor(const Range& range) const
{
    const qreal spare = viewExtent() - (range.last - range.first);
    if (spare <= 0)
        return range.first;
    const qreal margin = std::min(m_revealMargin, spare / 2);
    const qreal lowest = range.last + margin - viewExtent();
    const qreal highest = range.first - margin;
    return std::max(std::min(m_targetPosition, highest), lowest);
}

void ScrollArea::scrollTo(qreal position, bool immediately)
{
    const qreal target = snapToDevicePixels(*this, m_orientation,
                                            std::clamp(position, 0.0, std::max(0.0, m_contentExtent - viewExtent())));
    const bool isNew = target != m_targetPosition;
    m_targetPosition = target;
    // A hidden area is not animated.
    if (immediately || !isVisible()) {
        m_animation.stop();
        moveTo(target);
    } else if (isNew) {
        m_animation.stop();
        m_startPosition = m_position;
        m_animation.setDuration(nextScrollDuration());
        m_animation.start();
    }
    if (isNew)
        Q_EMIT targetPositionChanged();
}

/**
 * Scrolls in quick succession are shorter, so that the focus does not leave the viewport while an arrow is held down.
 */
int ScrollArea::nextScrollDuration()
{
    const qint64 since = m_lastScroll.isValid() ? m_lastScroll.elapsed() : scrollDuration;
    m_lastScroll.start();
    return int(std::clamp<qint64>(2 * since, minScrollDuration, scrollDuration));
}

void ScrollArea::moveTo(qreal position)
{
    const qreal whole = snapToDevicePixels(*this, m_orientation, position);
    if (whole == m_position)
        return;
    m_position = whole;
    updateContentItem();
    Q_EMIT positionChanged();
}

} // namespace quillmere
