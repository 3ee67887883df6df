#pragma once

#include "IdleInhibitor.h"
#include "SessionBus.h"

class DesktopLink;

/**
 * Prevents the screensaver, screen blanking and the sleep of the display while it exists; for pictures without playback
 * controls. Constructor and destructor do not block. Without a session bus, the desktop's screensaver is not inhibited.
 * Screen thread only; the screen that shows the picture owns it. The application object must outlive it.
 */
class WakeLock
{
public:
    /** Desktops show `reason` in a list of what inhibits the screensaver. */
    explicit WakeLock(const QString& reason, const QString& busAddress = SessionBus::address());
    ~WakeLock();
    WakeLock(const WakeLock&) = delete;
    WakeLock& operator=(const WakeLock&) = delete;

private:
    IdleInhibitor m_idleInhibitor;
    DesktopLink* m_link = nullptr; ///< its own owner, see there; none without a bus
};
