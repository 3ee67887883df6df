#pragma once

#include "MprisState.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QObject>
#include <QVariantMap>

#include <atomic>
#include <optional>

namespace quillmere {

class MprisPlayerInterface;

/**
 * A player on the session bus that other programs (phone remotes, media keys, desktops) can read and control by MPRIS
 * 2. Created on the screen thread; then a DesktopLink owns it and moves it to its thread. The signals are requests of
 * other programs.
 */
class MprisPlayer : public QObject
{
    Q_OBJECT

public:
    MprisPlayer();
    ~MprisPlayer() override;

    /** Registers the player until it is destroyed. Blocks until the bus answers. To be called once. */
    void registerOn(const QDBusConnection& bus);

    /** Any thread. */
    void setPosition(qint64 microseconds) { m_position.store(microseconds, std::memory_order_relaxed); }
    qint64 position() const { return m_position.load(); }

    const QString& applicationName() const { return m_applicationName; }
    const QString& desktopEntry() const { return m_desktopEntry; }
    const MprisState& state() const { return m_state; }
    QVariantMap metadata() const;
    const QDBusObjectPath& trackId() const { return m_trackId; }

    /** Only after `registerOn`. */
    void setState(MprisState state);
    /** Announces on the bus that the position has jumped. Only after `registerOn`. */
    void notifySeeked(qint64 microseconds);

Q_SIGNALS:
    void playRequested();
    void pauseRequested();
    void playPauseRequested();
    void stopRequested();
    void seekRequested(qint64 microseconds); ///< relative to the current position
    void positionRequested(qint64 microseconds);

private:
    bool registerName(const QString& name);

    const QString m_applicationName;    ///< shown to users
    const QString m_desktopEntry;       ///< name of the desktop file, without its suffix
    std::atomic<qint64> m_position = 0; ///< microseconds
    MprisState m_state;

    // Set by `registerOn`.
    std::optional<QDBusConnection> m_bus;
    QDBusObjectPath m_trackId;
    MprisPlayerInterface* m_interface = nullptr; ///< child of this object
    QString m_serviceName;                       ///< registered bus name; empty if both possible names were in use
};

} // namespace quillmere
