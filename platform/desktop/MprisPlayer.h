#pragma once

#include "MprisState.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QObject>
#include <QVariantMap>

#include <functional>

class MprisPlayerInterface;

/**
 * A player on the session bus that other programs (phone remotes, media keys, desktops) can read and control by MPRIS
 * 2. Registered while this object exists. The constructor blocks until the bus answers. Any one thread
 * only. The signals are requests of other programs.
 */
class MprisPlayer : public QObject
{
    Q_OBJECT

public:
    struct Application
    {
        QString name;         ///< shown to users
        QString desktopEntry; ///< name of the desktop file, without its suffix
    };

    /** `position` returns microseconds; it is called on this object's thread. */
    MprisPlayer(QDBusConnection bus, Application application, std::function<qint64()> position,
                QObject* parent = nullptr);
    ~MprisPlayer() override;

    const Application& application() const { return m_application; }
    const MprisState& state() const { return m_state; }
    qint64 position() const { return m_position(); }
    QVariantMap metadata() const;
    const QDBusObjectPath& trackId() const { return m_trackId; }

    void setState(MprisState state);

Q_SIGNALS:
    void playRequested();
    void pauseRequested();
    void playPauseRequested();
    void stopRequested();
    void seekRequested(qint64 microseconds); ///< relative to the current position
    void positionRequested(qint64 microseconds);

    /** Emitted by the owner when the position has jumped; sent on the bus as `Seeked`. */
    void seeked(qint64 microseconds);

private:
    bool registerName(const QString& name);

    QDBusConnection m_bus;
    Application m_application;
    std::function<qint64()> m_position;
    QDBusObjectPath m_trackId;
    MprisState m_state;
    MprisPlayerInterface* m_interface; ///< child of this object
    QString m_serviceName;             ///< registered bus name; empty if both possible names were in use
};
