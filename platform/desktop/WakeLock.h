#pragma once

#include "SessionBus.h"

class DesktopLink;

/**
 * No screensaver and no blanking of the screen for as long as this is there; for what is shown and cannot be driven.
 * Neither its making nor its end waits for anything; nothing without a bus. Screen thread; whoever shows the picture
 * owns it. The application object must outlive it.
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
    DesktopLink* m_link = nullptr; ///< its own owner, see there; none without a bus
};
