#pragma once

#include "DisplayPower.h"
#include "Worker.h"

#include <QString>

/**
 * The machine's display: the outputs of the Wayland compositor or the X server, through a plug-in that is loaded when they
 * are first switched off. It also notes "on" or "off" in a file for other programs, "on" from the beginning. Without a
 * way to switch the outputs only the file is written.
 *
 * All of it happens on a background thread, which the destructor waits for. Destroyed while the outputs are off, it
 * switches them on and leaves the file as it is: the program ends, which is no reason to wake a television.
 */
class SystemDisplayPower : public DisplayPower
{
public:
    /** No file if `stateFile` is empty. */
    explicit SystemDisplayPower(const QString& stateFile);
    ~SystemDisplayPower() override;

    void switchOff() override;
    Completion<bool> switchOn() override;

private:
    class Display;

    std::shared_ptr<Display> m_display; ///< used by the background thread alone
    Worker m_worker;
    bool m_isOff = false;
};
