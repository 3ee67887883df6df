#pragma once

#include "ChildProcess.h"

#include <QDBusConnection>
#include <QTemporaryDir>

#include <memory>

namespace quillmere {

/** A D-Bus message bus for one test, which starts no services. Single-threaded. */
class PrivateBus
{
public:
    /** Throws std::runtime_error with a readable message if `dbus-daemon` is missing. */
    PrivateBus();
    ~PrivateBus();

    const QString& address() const { return m_address; }

    /** A new connection with a unique connection name. It is closed when this object is destroyed. */
    QDBusConnection connect();

    /** Ends the bus, as happens at the end of the viewer's session. */
    void end() { m_daemon->end(); }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ChildProcess> m_daemon;
    QString m_address;
    QStringList m_connections;
};

} // namespace quillmere
