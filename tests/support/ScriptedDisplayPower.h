#pragma once

#include "DisplayPower.h"

#include <QStringList>

/** A display that only notes what is asked of it. */
class ScriptedDisplayPower : public DisplayPower
{
public:
    void switchOff() override { asked.append(QStringLiteral("off")); }
    void switchOn() override { asked.append(QStringLiteral("on")); }

    QStringList asked;
};
