#pragma once

#include <QElapsedTimer>
#include <QQuickItem>
#include <QVariantAnimation>

#include <optional>

/**
 * Content longer than its room, that moves so that what has the focus is in sight: smoothly, within about a quarter of
 * a second, towards a new aim at once when it changes on the way. It stops on whole device pixels and moves by them, so
 * that painted art stays sharp. It does not clip, as its edges are the display's.
 *
 * Its children stand on `contentItem`. Lengths are points along `orientation`. Screen thread only; its parent owns it.
 */
class ScrollArea : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation NOTIFY orientationChanged FINAL)
    /** How long the content is; set by the screen, as the length of what it puts there. */
    Q_PROPERTY(qreal contentExtent READ contentExtent WRITE setContentExtent NOTIFY contentExtentChanged FINAL)
    /** What stays in sight before and after the revealed thing, where there is that much content and room. */
    Q_PROPERTY(qreal lead READ lead WRITE setLead NOTIFY leadChanged FINAL)
    /** How far the content has moved out on the leading side, now. */
    Q_PROPERTY(qreal position READ position NOTIFY positionChanged FINAL)
    Q_PROPERTY(QQuickItem* contentItem READ contentItem CONSTANT FINAL)
    Q_PROPERTY(QQmlListProperty<QObject> content READ content FINAL)
    Q_CLASSINFO("DefaultProperty", "content")

public:
    explicit ScrollArea(QQuickItem* parent = nullptr);
    ~ScrollArea() override;

    static constexpr int scrollTime = 250; // milliseconds

    Qt::Orientation orientation() const { return m_orientation; }
    void setOrientation(Qt::Orientation orientation);
    qreal contentExtent() const { return m_contentExtent; }
    void setContentExtent(qreal extent);
    qreal lead() const { return m_lead; }
    void setLead(qreal lead);
    qreal position() const { return m_position; }
    QQuickItem* contentItem() const { return m_contentItem; }
    QQmlListProperty<QObject> content();

    /** The length of the room. */
    qreal viewExtent() const { return m_orientation == Qt::Vertical ? height() : width(); }
    /** Where the scroll that is under way ends; `position()` at rest. */
    qreal aim() const { return m_aim; }

    /** Brings `first` to `last` of the content into sight, from its beginning when it is longer than the room. */
    void reveal(qreal first, qreal last, bool atOnce = false);

    /** Moves by `distance`, within the content; answers whether there was anywhere to go. */
    bool scrollBy(qreal distance);

Q_SIGNALS:
    void orientationChanged();
    void contentExtentChanged();
    void leadChanged();
    /** Each frame of a scroll. */
    void positionChanged();
    /** Where the scroll goes has changed. */
    void aimChanged();

protected:
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void updatePolish() override;

private:
    /** A part of the content, in points along the orientation. */
    struct Stretch
    {
        qreal first;
        qreal last;
    };

    void layOut();
    void keepInSight(bool atOnce);
    void go(qreal wish, bool atOnce);
    void moveTo(qreal position);
    int timeForNextScroll();
    qreal aimFor(const Stretch& stretch) const;

    Qt::Orientation m_orientation = Qt::Vertical;
    qreal m_contentExtent = 0;
    qreal m_lead = 0;
    qreal m_position = 0;
    qreal m_aim = 0;
    QQuickItem* m_contentItem;
    std::optional<Stretch> m_revealed;
    bool m_isSeen = false; ///< what was last shown at once has been drawn: further changes are to be followed by eye
    qreal m_from = 0;      ///< where the scroll under way began
    QVariantAnimation m_motion;
    QElapsedTimer m_sinceScroll;
    QList<QMetaObject::Connection> m_resizes;
};
