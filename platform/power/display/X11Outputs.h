#pragma once

#include "DisplayOutputs.h"

struct xcb_connection_t;

namespace quillmere {

/** The monitors of the X server that DISPLAY names, switched through the DPMS extension. */
class X11Outputs : public DisplayOutputs
{
public:
    bool switchOff() override;
    void switchOn() override;

private:
    void restore(xcb_connection_t* connection) const;

    bool m_wasEnabled = false; ///< whether DPMS was enabled before switchOff(), which enables it
};

} // namespace quillmere
