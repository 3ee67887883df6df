#pragma once

#include "KeyRepeat.h"
#include "RemoteButton.h"

#include <QEvent>
#include <QObject>

class QKeyEvent;
class QWindow;

namespace quillmere {

/**
 * Translates the keys of a remote that a window receives into one Qt key per button, before any other handler sees
 * them. Buttons with `CanonicalKey::ignoresRepeat` act once per press. Other buttons repeat while held, at the
 * program's own rate on every system; each repeat is a press with `isAutoRepeat()`. The first press keeps its text,
 * which distinguishes the Return key from a Select button. Keys that are not remote buttons pass unchanged, with the
 * system's repeats. Screen thread only; owned by the window; the clock outlives it.
 */
class RemoteInput : public QObject
{
    Q_OBJECT

public:
    RemoteInput(QWindow* window, Clock& clock);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool translate(const QKeyEvent& event, const CanonicalKey& canonical);
    void press(const CanonicalKey& canonical);
    void release(const QKeyEvent& event, const CanonicalKey& canonical);
    void releaseHeld();
    bool isRepeat(const QKeyEvent& press, RemoteButton button) const;
    void sendRepeat();
    void sendKey(QEvent::Type type, int key, const QString& text = {}, bool isRepeat = false);

    QWindow* m_window;
    Clock& m_clock;
    KeyRepeat m_repeat;
    RemoteButton m_held = RemoteButton::None; ///< the repeating button that is down, also while its release is delayed
    std::unique_ptr<Clock::Timer> m_releaseTimer; ///< delays the release of m_held, which may be part of an X11 repeat
    /** The button whose delayed release was sent last. If an X11 repeat of it comes late, the repetition continues. */
    RemoteButton m_sentRelease = RemoteButton::None;
    RemoteButton m_released = RemoteButton::None; ///< button of the last release event
    quint64 m_pressedAt = 0;                      ///< time of the latest press, in milliseconds
    quint64 m_releasedAt = 0;                     ///< time of the latest release, in milliseconds
    bool m_isSending = false;
};

} // namespace quillmere
