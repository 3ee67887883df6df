#include "StackSight.h"

#include "LazyStack.h"
#include "ScrollArea.h"

namespace {

qreal along(Qt::Orientation orientation, const QPointF& point)
{
    return orientation == Qt::Vertical ? point.y() : point.x();
}

} // namespace

StackSight::StackSight(LazyStack& stack) : m_stack(stack) {}

StackSight::~StackSight() = default;

void StackSight::follow()
{
    for (const auto& connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_area = nullptr;
    m_outerArea = nullptr;
    m_outerStack = nullptr;
    for (QQuickItem* item = m_stack.parentItem(); item && !m_outerArea; item = item->parentItem()) {
        m_connections << connect(item, &QQuickItem::parentChanged, this, &StackSight::followParent);
        listen(item);
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

void StackSight::followParent(const QQuickItem* parent)
{
    if (parent)
        return follow();
    // An ancestor left the screen, perhaps because it is being destroyed: it must not be cast or called.
    m_area = nullptr;
    m_outerArea = nullptr;
    m_outerStack = nullptr;
}

void StackSight::listen(const QQuickItem* item)
{
    m_connections << connect(item, &QQuickItem::xChanged, this, &StackSight::changed)
                  << connect(item, &QQuickItem::yChanged, this, &StackSight::changed);
    if (auto stack = qobject_cast<const LazyStack*>(item))
        m_connections << connect(stack, &LazyStack::placeChanged, this, &StackSight::changed);
    if (auto area = qobject_cast<const ScrollArea*>(item))
        m_connections << connect(area, &ScrollArea::positionChanged, this, &StackSight::changed)
                      << connect(area, &ScrollArea::aimChanged, this, &StackSight::changed)
                      << connect(area, &QQuickItem::widthChanged, this, &StackSight::changed)
                      << connect(area, &QQuickItem::heightChanged, this, &StackSight::changed);
}

ScrollArea* StackSight::area() const
{
    return m_area;
}

qreal StackSight::offset() const
{
    return along(m_stack.orientation(), m_stack.mapToItem(m_area->contentItem(), QPointF()));
}

QList<StackSight::Stretch> StackSight::shown(qreal margin) const
{
    if (!m_area)
        return {};
    QList<Stretch> stretches;
    for (const qreal position : {m_area->aim(), m_area->position()}) {
        const qreal first = position - offset();
        stretches.append({first - margin, first + m_area->viewExtent() + margin});
    }
    return stretches;
}

bool StackSight::isNear() const
{
    if (!m_outerArea || (m_outerStack && m_outerStack->isBesidePlace(&m_stack)))
        return true;
    const Qt::Orientation orientation = m_outerArea->orientation();
    const qreal first = along(orientation, m_area->mapToItem(m_outerArea->contentItem(), QPointF()));
    const qreal last = first + along(orientation, QPointF(m_area->width(), m_area->height()));
    const auto shows = [&](qreal position) { return first < position + m_outerArea->viewExtent() && last > position; };
    return shows(m_outerArea->aim()) || shows(m_outerArea->position());
}
