#pragma once

#include <QBasicTimer>
#include <QQuickItem>

namespace quillmere {

/**
 * Base class of items that show a picture aligned to device pixels. An ancestor may move or scale such an item at any
 * time, so it checks its placement in every frame. Screen thread only; its parent item owns it.
 */
class PixelAlignedItem : public QQuickItem
{
    Q_OBJECT
    QML_NAMED_ELEMENT(PixelAlignedItem)
    QML_UNCREATABLE("Base class of items in C++")

protected:
    explicit PixelAlignedItem(QQuickItem* parent);

    /** Called for each frame, after its animations. */
    virtual void trackPlacement() = 0;
    /** Called when a movement has ended: when `stableTime` has passed since the last restartStableTimer(). */
    virtual void onStable() = 0;

    void restartStableTimer() { m_stableTimer.start(stableTime, this); }
    void stopStableTimer() { m_stableTimer.stop(); }
    /** Whether no movement is in progress, that is, the timer is not running. */
    bool isStable() const { return !m_stableTimer.isActive(); }

    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void timerEvent(QTimerEvent* event) override;

private:
    static constexpr int stableTime = 50; ///< milliseconds; longer than the time between two steps of an animation

    QBasicTimer m_stableTimer;
    QMetaObject::Connection m_frameConnection;
};

} // namespace quillmere
