#pragma once

#include "CallQueue.h"
#include "MprisPlayer.h"
#include "ScreenSaverInhibitor.h"

#include <atomic>
#include <memory>

namespace quillmere {

/**
 * Connection of a DesktopPresence or a WakeLock to the session bus. Owns the screensaver inhibitor and, if given, the
 * MPRIS player. Does nothing if the bus cannot be reached. Created on the screen thread. Lives on the desktop thread,
 * which makes all session bus calls, because connecting to a bus that does not respond blocks. Destroys itself after
 * `close` or when that thread ends, which is when the application object is destroyed.
 */
class DesktopLink : public CallQueue
{
public:
    /** `reason` is why the screensaver is inhibited; desktops show it to the user. */
    DesktopLink(QString busAddress, QString reason, std::unique_ptr<MprisPlayer> mpris = {});
    ~DesktopLink() override;

    // Called on the screen thread. Each function returns at once; the work is done on the desktop thread.
    void setState(const MprisState& state, bool inhibits);
    void notifySeeked(qint64 microseconds);
    /** Removes the player from the bus and allows the screensaver. The object must not be used afterwards. */
    void close();

private:
    void open();
    void applyState(const MprisState& state, bool inhibits);
    void shutDown();

    const QString m_busAddress;
    const QString m_application; ///< name shown to users
    const QString m_reason;
    const QString m_connection; ///< name of the QDBusConnection
    std::atomic_bool m_isClosing = false;
    std::unique_ptr<MprisPlayer> m_mpris;              ///< null after `close`
    std::unique_ptr<ScreenSaverInhibitor> m_inhibitor; ///< null without a connection
};

} // namespace quillmere
