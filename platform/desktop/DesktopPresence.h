#pragma once

#include "MprisState.h"
#include "SessionBus.h"
#include "VideoPlayer.h"

#include <QObject>

#include <memory>

namespace quillmere {

class DesktopLink;
class IdleInhibitor;
class MprisPlayer;

/**
 * Connects a player with the desktop. While it plays, prevents the screensaver, screen blanking and display sleep.
 * Offers MPRIS, so that other programs can read the player's state and control it. Without a session bus it only
 * prevents display sleep. The destructor does not block.
 *
 * Screen thread only; the screen that shows the player owns it. The player and the application object must outlive it.
 */
class DesktopPresence : public QObject
{
    Q_OBJECT

public:
    /** Desktops show `reason` in their list of programs that inhibit the screensaver. */
    DesktopPresence(VideoPlayer& player, const QString& reason, const QString& busAddress = SessionBus::address());
    ~DesktopPresence() override;

Q_SIGNALS:
    /** Another program asks to stop playing. */
    void stopRequested();

private:
    void connectTo(MprisPlayer& mpris);
    void onItemChanged();
    void publishState();
    void onPositionChanged();
    MprisState state() const;

    VideoPlayer& m_player;
    DesktopLink* m_link = nullptr;  ///< destroys itself after close(); null without a bus
    MprisPlayer* m_mpris = nullptr; ///< m_link owns it and moves it to its thread; null without a bus
    QMetaObject::Connection m_itemStatus;
    std::unique_ptr<IdleInhibitor> m_idleInhibitor; ///< set while the player is not paused
    MprisState m_publishedState;
    double m_position = 0; ///< seconds
};

} // namespace quillmere
