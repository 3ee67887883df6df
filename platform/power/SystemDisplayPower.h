#pragma once

#include "DisplayPower.h"
#include "Worker.h"

#include <QString>

namespace quillmere {

/**
 * Switches the outputs of the Wayland compositor or the X server, through a plug-in that is loaded at the first
 * switchOff(). Also writes "on" or "off" to a state file for other programs; the constructor writes "on". If the
 * outputs cannot be switched, only the file is written.
 *
 * The work is done on a background thread; the destructor waits for it. If the outputs are off, the destructor switches
 * them on but leaves "off" in the file, so that the end of the program does not wake a television over HDMI-CEC.
 */
class SystemDisplayPower : public DisplayPower
{
public:
    /** Writes no file if `stateFile` is empty. */
    explicit SystemDisplayPower(const QString& stateFile);
    ~SystemDisplayPower() override;

    void switchOff() override;
    Completion<bool> switchOn() override;

private:
    class Display;

    std::shared_ptr<Display> m_display; ///< used on the background thread only
    Worker m_worker;
    bool m_isOff = false;
};

} // namespace quillmere
