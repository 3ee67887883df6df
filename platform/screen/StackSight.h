#pragma once

#include <QObject>
#include <QPointer>

class LazyStack;
class QQuickItem;
class ScrollArea;

/**
 * What is to be seen of a `LazyStack`: now, and where the scrolls under way end. It belongs to the stack and follows the
 * scroll area around it, and the one around that. Screen thread only.
 */
class StackSight : public QObject
{
    Q_OBJECT

public:
    /** A part of the stack, in its points. */
    struct Stretch
    {
        qreal first;
        qreal last;
    };

    explicit StackSight(LazyStack& stack);
    ~StackSight() override;

    /** To be called whenever the stack has come to stand somewhere else. */
    void follow();

    /** The scroll area of the stack's orientation around it; nothing where it is not in one. */
    ScrollArea* area() const;

    /** Where the stack begins in the content of the area. */
    qreal offset() const;

    /** What the area shows, with a margin on either side. */
    QList<Stretch> shown(qreal margin) const;

    /** Whether the area itself is in sight of the one around it, or stands where the next move may lead. */
    bool isNear() const;

Q_SIGNALS:
    void changed();

private:
    void followParent(const QQuickItem* parent);
    void listen(const QQuickItem* item);

    LazyStack& m_stack;
    QPointer<ScrollArea> m_area;
    QPointer<ScrollArea> m_outerArea;
    QPointer<LazyStack> m_outerStack;
    QList<QMetaObject::Connection> m_connections;
};
