#pragma once

#include "MprisState.h"
#include "SessionBus.h"
#include "VideoPlayer.h"

#include <QObject>

#include <memory>

class DesktopLink;
class IdleInhibitor;

/**
 * What the desktop has of a player: no screensaver, no blanking of the screen and no sleep of the display while it plays,
 * and MPRIS, by which other programs read and drive it. There from its making to its end, which waits for nothing; without
 * a bus only the display's sleep is kept away.
 * Screen thread; whoever shows the player owns it. The player must outlive it, as must the application object.
 */
class DesktopPresence : public QObject
{
    Q_OBJECT

public:
    /** Desktops show `reason` in a list of what inhibits the screensaver. */
    DesktopPresence(VideoPlayer& player, const QString& reason, const QString& busAddress = SessionBus::address());
    ~DesktopPresence() override;

Q_SIGNALS:
    /** Another program wants the player left. */
    void stopRequested();

private:
    void drive();
    void takeItem();
    void tell();
    void positionChanged();
    MprisState state() const;

    VideoPlayer& m_player;
    DesktopLink* m_link = nullptr; ///< its own owner, see there; none without a bus
    QMetaObject::Connection m_itemStatus;
    std::unique_ptr<IdleInhibitor> m_idleInhibitor; ///< while it plays
    MprisState m_told;
    double m_position = 0;
};
