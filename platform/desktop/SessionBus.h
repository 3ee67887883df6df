#pragma once

#include <QString>

/** Address of the user's session bus. */
namespace quillmere::SessionBus {

/** From DBUS_SESSION_BUS_ADDRESS or else the socket in XDG_RUNTIME_DIR; empty if there is none. Never starts a bus. */
QString address();

} // namespace quillmere::SessionBus
