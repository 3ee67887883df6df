#pragma once

namespace quillmere {

/**
 * Switches the outputs of a display server off and on, over a connection of its own. Used on one background thread,
 * because each call may block: for a Wayland compositor that does not respond, at most a few seconds.
 */
class DisplayOutputs
{
public:
    virtual ~DisplayOutputs() = default;

    /** Switches every output off; false if the server does not support it or refuses. */
    virtual bool switchOff() = 0;
    /** Switches on the outputs that the last `switchOff` switched off. */
    virtual void switchOn() = 0;
};

/**
 * The only function that the plug-in exports. `platform` is Qt's platform name. Returns null if it is not supported.
 */
using CreateDisplayOutputs = DisplayOutputs* (*)(const char* platform);
inline constexpr auto createDisplayOutputsName = "quillmereCreateDisplayOutputs";

} // namespace quillmere
