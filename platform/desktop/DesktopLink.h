#pragma once

#include "MprisPlayer.h"
#include "ScreenSaverInhibitor.h"

#include <QObject>

#include <atomic>
#include <memory>

/**
 * Connection of a DesktopPresence or a WakeLock to the session bus. Owns the screensaver inhibitor and, if wanted, the
 * MPRIS player. Does nothing if the bus cannot be reached. Created on the screen thread, lives on the DesktopThread,
 * and destroys itself after `close` or when that thread ends. The signals are requests of other programs on the bus.
 */
class DesktopLink : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        QString busAddress;
        MprisPlayer::Application application;
        QString reason; ///< why the screensaver is inhibited; desktops show it to the user
        bool hasMprisPlayer = true;
    };

    explicit DesktopLink(Options options);
    ~DesktopLink() override;

    // Called on the screen thread. Each function returns at once; the work is done on the DesktopThread.
    void setPosition(qint64 microseconds) { m_position.store(microseconds, std::memory_order_relaxed); }
    void setState(const MprisState& state, bool inhibits);
    void notifySeeked(qint64 microseconds);
    /** Removes the player from the bus and allows the screensaver. The object must not be used afterwards. */
    void close();

Q_SIGNALS:
    void playRequested();
    void pauseRequested();
    void playPauseRequested();
    void stopRequested();
    void seekRequested(qint64 microseconds);
    void positionRequested(qint64 microseconds);

private:
    void open();
    void applyState(const MprisState& state, bool inhibits);
    void shutDown();

    Options m_options;
    QString m_connection;               ///< name of the QDBusConnection
    std::atomic<qint64> m_position = 0; ///< microseconds
    std::atomic_bool m_isClosing = false;
    std::unique_ptr<ScreenSaverInhibitor> m_inhibitor;
    std::unique_ptr<MprisPlayer> m_mpris;
};
