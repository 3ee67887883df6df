#pragma once

#include "MprisState.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QObject>
#include <QVariantMap>

#include <functional>

class MprisPlayerInterface;

/**
 * One player on the bus in the terms of MPRIS 2, for phones, keyboards and desktops to read and to drive; there as long
 * as this is. Joining the bus and taking the name wait for the bus. Any one thread; its signals are what others ask for.
 */
class MprisPlayer : public QObject
{
    Q_OBJECT

public:
    struct Application
    {
        QString name;         ///< for people
        QString desktopEntry; ///< name of its desktop file, without the ending
    };

    /** `position` answers in microseconds, on this object's thread. */
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
    void seekRequested(qint64 microseconds); ///< from where it plays
    void positionRequested(qint64 microseconds);

    /** For whoever knows of a jump of the position to emit; it is told on the bus. */
    void seeked(qint64 microseconds);

private:
    bool takeName(const QString& name);

    QDBusConnection m_bus;
    Application m_application;
    std::function<qint64()> m_position;
    QDBusObjectPath m_trackId;
    MprisState m_state;
    MprisPlayerInterface* m_interface; ///< a child, as interfaces are
    QString m_serviceName;             ///< what is on the bus for it, empty when both of its names were taken
};
