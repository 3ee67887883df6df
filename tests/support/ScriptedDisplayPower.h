#pragma once

#include "DisplayPower.h"

#include <QStringList>

/** A display that only notes what is asked of it. */
class ScriptedDisplayPower : public DisplayPower
{
public:
    void switchOff() override { asked.append(QStringLiteral("off")); }
    Completion<bool> switchOn() override
    {
        asked.append(QStringLiteral("on"));
        goingOn = {};
        if (!isSlow)
            goingOn.resolve(true);
        return goingOn;
    }

    QStringList asked;
    bool isSlow = false;      ///< then the test resolves `goingOn`
    Completion<bool> goingOn; ///< of the last `switchOn`
};
