#pragma once

#include <QObject>
#include <QPointer>

class QQuickItem;

namespace quillmere {

class LazyStack;
class ScrollArea;

/**
 * The visible part of a `LazyStack`, now and at the end of running scrolls. It tracks the enclosing scroll area and the
 * scroll area around that one. Owned by the stack. Screen thread only.
 */
class StackViewport : public QObject
{
    Q_OBJECT

public:
    /** A range along the stack, in its points. */
    struct Range
    {
        qreal first;
        qreal last;
    };

    explicit StackViewport(LazyStack& stack);
    ~StackViewport() override;

    /**
     * Finds the scroll areas again and connects to them. The stack calls this when its ancestors or orientation change.
     */
    void reconnect();

    /** The enclosing scroll area with the stack's orientation; null if none. */
    ScrollArea* area() const;

    /** Position of the stack in the content of the area. */
    qreal offset() const;

    /** The ranges visible at the target and the current scroll position, extended by `margin` on both sides. */
    QList<Range> visibleRanges(qreal margin) const;

    /** Whether the area is visible in the outer scroll area, or is in or beside the current row of the outer stack. */
    bool isNear() const;

Q_SIGNALS:
    void changed();

private:
    void onParentChanged(const QQuickItem* parent);
    void connectTo(const QQuickItem* item);

    LazyStack& m_stack;
    QPointer<ScrollArea> m_area;
    QPointer<ScrollArea> m_outerArea;
    QPointer<LazyStack> m_outerStack;
    QList<QMetaObject::Connection> m_connections;
};

} // namespace quillmere
