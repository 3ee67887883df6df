#pragma once

/**
 * The outputs of a display server, reached over a connection of its own. Used by one thread, not the screen's: each call
 * may wait for the server, a hanging Wayland compositor for at most a few seconds.
 */
class DisplayOutputs
{
public:
    virtual ~DisplayOutputs() = default;

    /** Switches every output off; false if the server has no way to do it or refuses. */
    virtual bool switchOff() = 0;
    /** Switches on again what the last `switchOff` switched off. */
    virtual void switchOn() = 0;
};

/** The plug-in's one exported function; `platform` is Qt's name of the platform. Null if the platform has no way. */
using CreateDisplayOutputs = DisplayOutputs* (*)(const char* platform);
inline constexpr auto createDisplayOutputsName = "quillmereCreateDisplayOutputs";
