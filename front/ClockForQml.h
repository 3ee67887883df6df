#pragma once

#include "Clock.h"

#include <QtQml/qqmlregistration.h>

namespace quillmere {

/** Registers Clock with QML; platform/clock does not depend on QML. */
struct ClockForQml
{
    Q_GADGET
    QML_FOREIGN(quillmere::Clock)
    QML_NAMED_ELEMENT(Clock)
    QML_UNCREATABLE("Created by QuillmereTVApp.")
};

} // namespace quillmere
