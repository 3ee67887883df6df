#pragma once

#include <QtGlobal>

#include <span>

/** The buttons of a remote control, whatever wire, air or bus they come over. */
enum class RemoteButton {
    None,
    Select,
    Back,
    PlayPause,
    Play,
    Pause,
    Stop,
    FastForward,
    Rewind,
    Next,
    Previous,
    ChannelUp,
    ChannelDown,
    Up,
    Down,
    Left,
    Right,
    Menu,
    Info,
    PageUp,
    PageDown
};

/** One way in which a button arrives. */
struct RemoteKey
{
    int key;          ///< Qt::Key; 0 for a key without a meaning of its own, told by the scan code alone
    quint32 scanCode; ///< native scan code, the kernel's key code + 8; 0 for any
    RemoteButton button;
};

/** What each button is handed on as: one Qt key a button. */
struct CanonicalKey
{
    RemoteButton button;
    int key;             ///< Qt::Key
    bool actsOnceAPress; ///< a held button does not repeat
};

/** Every way in which a button arrives; the first row that fits counts. */
std::span<const RemoteKey> remoteKeys();

std::span<const CanonicalKey> canonicalKeys();

/** The button behind a key event, None when it is no remote button. */
RemoteButton remoteButton(int key, quint32 scanCode);

/** The row of a button, nothing for None. */
const CanonicalKey* canonicalKey(RemoteButton button);
