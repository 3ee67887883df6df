#pragma once

#include "ChildProcess.h"

#include <QDBusConnection>
#include <QTemporaryDir>

#include <memory>

/** A message bus of a test's own, which starts no services. One thread. */
class PrivateBus
{
public:
    /** Throws std::runtime_error with a sentence when there is no `dbus-daemon`. */
    PrivateBus();
    ~PrivateBus();

    const QString& address() const { return m_address; }

    /** A connection under a name of its own, let go with the bus. */
    QDBusConnection connect();

    /** It dies, as with the viewer's session. */
    void end() { m_daemon->end(); }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ChildProcess> m_daemon;
    QString m_address;
    QStringList m_connections;
};
