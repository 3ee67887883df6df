#pragma once

/** Switches the display off and on. Neither call waits for the display. Screen thread only. */
class DisplayPower
{
public:
    virtual ~DisplayPower() = default;

    virtual void switchOff() = 0;
    virtual void switchOn() = 0;
};
