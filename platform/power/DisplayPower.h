#pragma once

#include "Completion.h"

/** Switches the display off and on. Neither call waits for the display. Screen thread only. */
class DisplayPower
{
public:
    virtual ~DisplayPower() = default;

    virtual void switchOff() = 0;
    /** Resolved when the display is on, or cannot be switched on: what is drawn before may never be shown. */
    virtual Completion<bool> switchOn() = 0;
};
