#pragma once

#include "Completion.h"

namespace quillmere {

/** Switches the display off and on. The calls do not block. Screen thread only. */
class DisplayPower
{
public:
    virtual ~DisplayPower() = default;

    virtual void switchOff() = 0;
    /**
     * Resolved when the display is on or cannot be switched on; the value has no meaning. Frames drawn before that may
     * never be shown.
     */
    virtual Completion<bool> switchOn() = 0;
};

} // namespace quillmere
