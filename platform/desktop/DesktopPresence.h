#pragma once

#include "MprisState.h"
#include "SessionBus.h"
#include "VideoPlayer.h"

#include <QObject>

#include <memory>

class DesktopLink;

/**
 * What the desktop has of a player: no screensaver and no blanking of the screen while it plays, and MPRIS, by which
 * other programs read and drive it. There from its making to its end, which waits for nothing; nothing without a bus.
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
    MprisState m_told;
    bool m_inhibits = false;
    double m_position = 0;
};
