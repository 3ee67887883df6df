#pragma once

#include "DisplayOutputs.h"

struct xcb_connection_t;

/** The monitors of the X server that DISPLAY names, switched by its DPMS extension. */
class X11Outputs : public DisplayOutputs
{
public:
    bool switchOff() override;
    void switchOn() override;

private:
    void restore(xcb_connection_t* connection) const;

    bool m_wasEnabled = false; ///< the server's own power saving, which switching off needs
};
