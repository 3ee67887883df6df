#include "SessionBus.h"

#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace quillmere {

QString SessionBus::address()
{
    const QString given = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    // "autolaunch:" would start a new bus, to which no other program is connected.
    if (given.startsWith("autolaunch:"_L1))
        return {};
    if (!given.isEmpty())
        return given;
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = folder + "/bus"_L1;
    if (folder.isEmpty() || !QFileInfo::exists(socket))
        return {};
    return "unix:path="_L1 + QString::fromLatin1(QUrl::toPercentEncoding(socket, "/"));
}

} // namespace quillmere
