#pragma once

#include "DisplayPower.h"

#include <QStringList>

namespace quillmere {

/** A fake display that only records the calls. */
class ScriptedDisplayPower : public DisplayPower
{
public:
    void switchOff() override { calls.append(QStringLiteral("off")); }
    Completion<bool> switchOn() override
    {
        calls.append(QStringLiteral("on"));
        switchOnCompletion = {};
        if (!isSlow)
            switchOnCompletion.resolve(true);
        return switchOnCompletion;
    }

    QStringList calls;
    bool isSlow = false;                 ///< if true, the test resolves `switchOnCompletion`
    Completion<bool> switchOnCompletion; ///< result of the last `switchOn`
};

} // namespace quillmere
