#pragma once

#include "FocusContainer.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QQuickItem>
#include <QVariantAnimation>

#include <optional>

namespace quillmere {

/**
 * A scrollable area for content that is longer than its viewport. It scrolls so that the focused item is visible:
 * animated, over about a quarter of a second; a new target redirects a running scroll. Positions are whole device
 * pixels, so that painted art stays sharp. It does not clip, because its edges are the display's edges.
 *
 * Children are placed in `contentItem`. Lengths are points along `orientation`. Screen thread only; owned by its
 * parent.
 */
class ScrollArea : public QQuickItem, public FocusContainer
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation NOTIFY orientationChanged FINAL)
    /** Length of the content; set by the screen. */
    Q_PROPERTY(qreal contentExtent READ contentExtent WRITE setContentExtent NOTIFY contentExtentChanged FINAL)
    /** Length kept visible before and after a revealed range, if there is enough content and room. */
    Q_PROPERTY(qreal revealMargin READ revealMargin WRITE setRevealMargin NOTIFY revealMarginChanged FINAL)
    /** Current scroll position: the content's first visible point. */
    Q_PROPERTY(qreal position READ position NOTIFY positionChanged FINAL)
    Q_PROPERTY(QQuickItem* contentItem READ contentItem CONSTANT FINAL)
    Q_PROPERTY(QQmlListProperty<QObject> content READ content FINAL)
    Q_CLASSINFO("DefaultProperty", "content")

public:
    explicit ScrollArea(QQuickItem* parent = nullptr);
    ~ScrollArea() override;

    static constexpr int scrollDuration = 250; // milliseconds

    Qt::Orientation orientation() const { return m_orientation; }
    void setOrientation(Qt::Orientation orientation);
    qreal contentExtent() const { return m_contentExtent; }
    void setContentExtent(qreal extent);
    qreal revealMargin() const { return m_revealMargin; }
    void setRevealMargin(qreal margin);
    qreal position() const { return m_position; }
    QQuickItem* contentItem() const { return m_contentItem; }
    QQmlListProperty<QObject> content();

    /** Length of the viewport. */
    qreal viewExtent() const { return m_orientation == Qt::Vertical ? height() : width(); }
    /** Position at the end of the running scroll; equal to position() at rest. */
    qreal targetPosition() const { return m_targetPosition; }

    /**
     * Scrolls so that the content from `first` to `last` is visible; its beginning if it is longer than the viewport.
     */
    void reveal(qreal first, qreal last, bool immediately = false);

    /** Scrolls by `distance`, within the content. Returns whether the target position changed. */
    bool scrollBy(qreal distance);

    /** Reveals the focused item, or its whole section if it fits, also when content before it grows or shrinks. */
    void onFocusInside(Focusable& focused, bool immediately) override;

Q_SIGNALS:
    void orientationChanged();
    void contentExtentChanged();
    void revealMarginChanged();
    /** Emitted in each frame of a scroll. */
    void positionChanged();
    void targetPositionChanged();

protected:
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void updatePolish() override;

private:
    /** A part of the content, in points along the orientation. */
    struct Range
    {
        qreal first;
        qreal last;
    };

    void updateContentItem();
    Range rangeOf(const Focusable& focused) const;
    void keepVisible(bool immediately);
    void scrollTo(qreal position, bool immediately);
    void moveTo(qreal position);
    int nextScrollDuration();
    qreal targetPositionFor(const Range& range) const;

    Qt::Orientation m_orientation = Qt::Vertical;
    qreal m_contentExtent = 0;
    qreal m_revealMargin = 0;
    qreal m_position = 0;
    qreal m_targetPosition = 0;
    QQuickItem* m_contentItem;
    std::optional<Range> m_revealedRange;
    QPointer<Focusable> m_revealedItem; ///< null if the viewer or a caller has scrolled since it was focused
    bool m_isDrawn = false;    ///< the position set without animation has been drawn; later changes are animated
    qreal m_startPosition = 0; ///< start of the running scroll
    QVariantAnimation m_animation;
    QElapsedTimer m_lastScroll;
    QList<QMetaObject::Connection> m_windowConnections;
};

} // namespace quillmere
