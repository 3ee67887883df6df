#pragma once

#include "XConnection.h"

#include <QString>
#include <QStringList>

namespace quillmere {

/**
 * A remote control that sends keys to an X display with XTest; they look like those of an infrared receiver.
 * Single-threaded.
 */
class RemoteControl
{
public:
    /** Throws std::runtime_error with a readable message if the display does not support XTest. */
    explicit RemoteControl(std::shared_ptr<XConnection> connection);

    /** Names of the buttons: select, back, play/pause, up, ... */
    static QStringList buttons();

    /**
     * Presses and releases a button. `button` is one of buttons(), or the name of an X keysym. Throws
     * std::invalid_argument if the display has no such key.
     */
    void press(const QString& button);
    void keyDown(const QString& button);
    void keyUp(const QString& button);

    /**
     * Gives the input focus to the topmost large window, because there is no window manager to do it. Returns false if
     * there is no such window.
     */
    bool focusTopWindow();

private:
    void send(const QString& button, bool down);

    std::shared_ptr<XConnection> m_connection;
};

} // namespace quillmere
