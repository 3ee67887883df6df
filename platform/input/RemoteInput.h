#pragma once

#include "KeyRepeat.h"
#include "RemoteButton.h"

#include <QEvent>
#include <QObject>

class QKeyEvent;
class QWindow;

/**
 * Turns whatever a remote sends to a window into one Qt key a button, before anything else sees it. A held select, back
 * or play/pause acts once; other held buttons repeat by the set's own clock, at one pace whatever the system's is: each
 * step is a press with `isAutoRepeat()`. The first press keeps its text, which tells a return key from a select button.
 * Keys that are no remote button pass untouched, with the system's repeats.
 * Screen thread only; the window owns it; the clock outlives it.
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
    void letGo();
    bool isRepeat(const QKeyEvent& press, RemoteButton button) const;
    void makeStep();
    void handOn(QEvent::Type type, int key, const QString& text = {}, bool isRepeat = false);

    QWindow* m_window;
    Clock& m_clock;
    KeyRepeat m_repeat;
    RemoteButton m_held = RemoteButton::None;     ///< the one that repeats, or would but for its latest release
    std::unique_ptr<Clock::Timer> m_letGo;        ///< its release waits to be told, as it may be none
    RemoteButton m_told = RemoteButton::None;     ///< was held until its release was told, which may have been none
    RemoteButton m_released = RemoteButton::None; ///< the latest to be released
    quint64 m_pressedAt = 0;                      ///< when it was pressed, in milliseconds
    quint64 m_releasedAt = 0;                     ///< and released
    bool m_handingOn = false;
};
