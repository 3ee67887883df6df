#pragma once

#include "XConnection.h"

#include <QString>
#include <QStringList>

/** A remote control whose keys arrive at an X display as an infrared receiver's do (XTest). One thread. */
class RemoteControl
{
public:
    /** Throws std::runtime_error with a sentence when the display takes no made-up keys. */
    explicit RemoteControl(std::shared_ptr<XConnection> connection);

    /** Names of the buttons: select, back, play/pause, up, ... */
    static QStringList buttons();

    /**
     * Presses a button and lets it go; `button` is one of buttons(), or an X keysym's name.
     * Throws std::invalid_argument when the display has no such key.
     */
    void press(const QString& button);
    void pushDown(const QString& button);
    void letGo(const QString& button);

    /** Gives the input focus to the topmost large window, as no window manager does it; false when there is none. */
    bool giveFocus();

private:
    void send(const QString& button, bool down);

    std::shared_ptr<XConnection> m_connection;
};
