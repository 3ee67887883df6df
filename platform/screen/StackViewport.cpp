#include "StackViewport.h"

#include "LazyStack.h"
#include "ScrollArea.h"

namespace quillmere {

namespace {

qreal along(Qt::Orientation orientation, const QPointF& point)
{
    return orientation == Qt::Vertical ? point.y() : point.x();
}

} // namespace

StackViewport::StackViewport(LazyStack& stack) : m_stack(stack) {}

StackViewport::~StackViewport() = default;

void StackViewport::reconnect()
{
    for (const auto& connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_area = nullptr;
    m_outerArea = nullptr;
    m_outerStack = nullptr;
    for (QQuickItem* item = m_stack.parentItem(); item && !m_outerArea; item = item->parentItem()) {
        m_connections << connect(item, &QQuickItem::parentChanged, this, &StackViewport::onParentChanged);
        connectTo(item);
        auto area = qobject_cast<ScrollArea*>(item);
        if (area && m_area)
            m_outerArea = area;
        else if (area && area->orientation() == m_stack.orientation())
            m_area = area;
        else if (auto stack = qobject_cast<LazyStack*>(item))
            m_outerStack = stack;
    }
    Q_EMIT changed();
}

void StackViewport::onParentChanged(const QQuickItem* parent)
{
    if (parent)
        return reconnect();
    // An ancestor left the screen, perhaps because it is being destroyed: do not cast or call it.
    m_area = nullptr;
    m_outerArea = nullptr;
    m_outerStack = nullptr;
}

void StackViewport::connectTo(const QQuickItem* item)
{
    m_connections << connect(item, &QQuickItem::xChanged, this, &StackViewport::changed)
                  << connect(item, &QQuickItem::yChanged, this, &StackViewport::changed);
    if (auto stack = qobject_cast<const LazyStack*>(item))
        m_connections << connect(stack, &LazyStack::currentRowChanged, this, &StackViewport::changed);
    if (auto area = qobject_cast<const ScrollArea*>(item))
        m_connections << connect(area, &ScrollArea::positionChanged, this, &StackViewport::changed)
                      << connect(area, &ScrollArea::targetPositionChanged, this, &StackViewport::changed)
                      << connect(area, &QQuickItem::widthChanged, this, &StackViewport::changed)
                      << connect(area, &QQuickItem::heightChanged, this, &StackViewport::changed);
}

ScrollArea* StackViewport::area() const
{
    return m_area;
}

qreal StackViewport::offset() const
{
    return along(m_stack.orientation(), m_stack.mapToItem(m_area->contentItem(), QPointF()));
}

QList<StackViewport::Range> StackViewport::visibleRanges(qreal margin) const
{
    if (!m_area)
        return {};
    QList<Range> ranges;
    for (const qreal position : {m_area->targetPosition(), m_area->position()}) {
        const qreal first = position - offset();
        ranges.append({first - margin, first + m_area->viewExtent() + margin});
    }
    return ranges;
}

bool StackViewport::isNear() const
{
    if (!m_outerArea || (m_outerStack && m_outerStack->isNearCurrentRow(&m_stack)))
        return true;
    const Qt::Orientation orientation = m_outerArea->orientation();
    const qreal first = along(orientation, m_area->mapToItem(m_outerArea->contentItem(), QPointF()));
    const qreal last = first + along(orientation, QPointF(m_area->width(), m_area->height()));
    const auto shows = [&](qreal position) { return first < position + m_outerArea->viewExtent() && last > position; };
    return shows(m_outerArea->targetPosition()) || shows(m_outerArea->position());
}

} // namespace quillmere
