#pragma once

#include <QString>

/** Where the viewer's session bus is. */
namespace SessionBus {

/** As the environment or else the user's runtime folder has it; empty when there is none. None is ever started. */
QString address();

} // namespace SessionBus
