#include "RemoteButton.h"

#include <Qt>

namespace quillmere {

namespace {

using enum RemoteButton;

// Scan code of a kernel key code: X11, Wayland and the console all add 8.
constexpr quint32 scan(quint32 keyCode)
{
    return keyCode + 8;
}

constexpr RemoteKey keys[] = {
    // On X11 and Wayland, both play/pause and play arrive as MediaPlay; only their scan codes differ.
    {Qt::Key_MediaPlay, scan(164), PlayPause}, // KEY_PLAYPAUSE
    {Qt::Key_MediaPlay, 0, Play},
    {Qt::Key_MediaTogglePlayPause, 0, PlayPause},
    {Qt::Key_F5, 0, PlayPause}, // for keyboards without media keys
    {Qt::Key_Play, 0, Play},
    {Qt::Key_MediaPause, 0, Pause},
    {Qt::Key_Pause, 0, Pause},
    {Qt::Key_MediaStop, 0, Stop},
    {Qt::Key_AudioForward, 0, FastForward},
    {Qt::Key_AudioRewind, 0, Rewind},
    {Qt::Key_MediaNext, 0, Next},
    {Qt::Key_MediaPrevious, 0, Previous},
    {Qt::Key_ChannelUp, 0, ChannelUp},
    {Qt::Key_ChannelDown, 0, ChannelDown},

    {Qt::Key_Select, 0, Select},
    {Qt::Key_Return, 0, Select},
    {Qt::Key_Enter, 0, Select},
    {Qt::Key_Yes, 0, Select},
    {Qt::Key_Back, 0, Back},
    {Qt::Key_Escape, 0, Back},
    {Qt::Key_Cancel, 0, Back},
    {Qt::Key_Close, 0, Back}, // KEY_EXIT
    {Qt::Key_Exit, 0, Back},

    {Qt::Key_Up, 0, Up},
    {Qt::Key_Down, 0, Down},
    {Qt::Key_Left, 0, Left},
    {Qt::Key_Right, 0, Right},
    {Qt::Key_Menu, 0, Menu},
    {Qt::Key_Settings, 0, Menu},
    {Qt::Key_Info, 0, Info},
    {Qt::Key_PageUp, 0, PageUp},
    {Qt::Key_PageDown, 0, PageDown},

    // Keys without a keysym have only a scan code.
    {0, scan(352), Select},      // KEY_OK
    {0, scan(353), Select},      // KEY_SELECT
    {0, scan(158), Back},        // KEY_BACK
    {0, scan(174), Back},        // KEY_EXIT
    {0, scan(164), PlayPause},   // KEY_PLAYPAUSE
    {0, scan(200), Play},        // KEY_PLAYCD
    {0, scan(207), Play},        // KEY_PLAY
    {0, scan(201), Pause},       // KEY_PAUSECD
    {0, scan(119), Pause},       // KEY_PAUSE
    {0, scan(128), Stop},        // KEY_STOP
    {0, scan(166), Stop},        // KEY_STOPCD
    {0, scan(208), FastForward}, // KEY_FASTFORWARD
    {0, scan(168), Rewind},      // KEY_REWIND
    {0, scan(163), Next},        // KEY_NEXTSONG
    {0, scan(407), Next},        // KEY_NEXT
    {0, scan(165), Previous},    // KEY_PREVIOUSSONG
    {0, scan(412), Previous},    // KEY_PREVIOUS
    {0, scan(402), ChannelUp},   // KEY_CHANNELUP
    {0, scan(403), ChannelDown}, // KEY_CHANNELDOWN
    {0, scan(139), Menu},        // KEY_MENU
    {0, scan(438), Menu},        // KEY_CONTEXT_MENU
    {0, scan(358), Info},        // KEY_INFO
};

constexpr CanonicalKey canonical[] = {
    {Select, Qt::Key_Select, true},
    {Back, Qt::Key_Back, true},
    {PlayPause, Qt::Key_MediaTogglePlayPause, true},
    {Play, Qt::Key_MediaPlay, true},
    {Pause, Qt::Key_MediaPause, true},
    {Stop, Qt::Key_MediaStop, true},
    {FastForward, Qt::Key_AudioForward, false},
    {Rewind, Qt::Key_AudioRewind, false},
    {Next, Qt::Key_MediaNext, false},
    {Previous, Qt::Key_MediaPrevious, false},
    {ChannelUp, Qt::Key_ChannelUp, false},
    {ChannelDown, Qt::Key_ChannelDown, false},
    {Up, Qt::Key_Up, false},
    {Down, Qt::Key_Down, false},
    {Left, Qt::Key_Left, false},
    {Right, Qt::Key_Right, false},
    {Menu, Qt::Key_Menu, true},
    {Info, Qt::Key_Info, true},
    {PageUp, Qt::Key_PageUp, false},
    {PageDown, Qt::Key_PageDown, false},
};

} // namespace

std::span<const RemoteKey> remoteKeys()
{
    return keys;
}

std::span<const CanonicalKey> canonicalKeys()
{
    return canonical;
}

RemoteButton remoteButton(int key, quint32 scanCode)
{
    const int known = key == Qt::Key_unknown ? 0 : key;
    for (const RemoteKey& row : keys) {
        if (row.key == known && (row.scanCode == 0 || row.scanCode == scanCode))
            return row.button;
    }
    return RemoteButton::None;
}

const CanonicalKey* canonicalKey(RemoteButton button)
{
    for (const CanonicalKey& row : canonical) {
        if (row.button == button)
            return &row;
    }
    return nullptr;
}

} // namespace quillmere
