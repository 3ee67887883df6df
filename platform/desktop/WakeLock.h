#pragma once

#include "IdleInhibitor.h"
#include "SessionBus.h"

namespace quillmere {

class DesktopLink;

/**
 * Prevents the screensaver, screen blanking and display sleep while it exists. For pictures without playback control,
 * such as a live channel; a controllable player has a DesktopPresence instead. Without a session bus it only prevents
 * display sleep. Constructor and destructor do not block.
 *
 * Screen thread only; the screen that shows the picture owns it. The application object must outlive it.
 */
class WakeLock
{
public:
    /** Desktops show `reason` in their list of programs that inhibit the screensaver. */
    explicit WakeLock(const QString& reason, const QString& busAddress = SessionBus::address());
    ~WakeLock();
    WakeLock(const WakeLock&) = delete;
    WakeLock& operator=(const WakeLock&) = delete;

private:
    IdleInhibitor m_idleInhibitor;
    DesktopLink* m_link = nullptr; ///< destroys itself after close(); null without a bus
};

} // namespace quillmere
