#pragma once

#include <QtGlobal>

#include <span>

namespace quillmere {

/** The buttons of a remote control, whichever way they are received. */
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

/** A key that means a button. */
struct RemoteKey
{
    int key;          ///< Qt::Key; 0 for a key that Qt does not know, identified by the scan code alone
    quint32 scanCode; ///< native scan code, the kernel's key code + 8; 0 for any
    RemoteButton button;
};

/** The one Qt key that is sent to the window for a button. */
struct CanonicalKey
{
    RemoteButton button;
    int key;            ///< Qt::Key
    bool ignoresRepeat; ///< no auto-repeat while the button is held
};

/** All keys that mean a button; the first matching row wins. */
std::span<const RemoteKey> remoteKeys();

std::span<const CanonicalKey> canonicalKeys();

/** The button of a key event; None if it is not a remote button. */
RemoteButton remoteButton(int key, quint32 scanCode);

/** The row of a button; null for None. */
const CanonicalKey* canonicalKey(RemoteButton button);

} // namespace quillmere
