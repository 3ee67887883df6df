#pragma once

#include "Clock.h"
#include "TaskScope.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <optional>

class QKeyEvent;
class QWindow;

namespace quillmere {

class DisplayPower;

/**
 * Switches the display off after a period without key presses and without playback. Switches it on again at the next
 * key press or when playback starts. The window does not receive the key that wakes the display: neither its press, nor
 * its repeats, nor its release.
 *
 * It is an event filter of the window. It must be created before the window's RemoteInput, so that it sees the keys
 * that RemoteInput sends. Screen thread only; must be destroyed before the window, the clock and the display power.
 */
class DisplaySleep : public QObject
{
    Q_OBJECT

public:
    DisplaySleep(QWindow& window, Clock& clock, DisplayPower& power, std::chrono::milliseconds delay);

    bool eventFilter(QObject* watched, QEvent* event) override;

    /** Parses "20min", "90s", "1h" or a plain number of minutes; nullopt for other texts. Zero means never. */
    static std::optional<std::chrono::milliseconds> parseDelay(const QString& text);

Q_SIGNALS:
    /** true: the window must show black and draw nothing more. false: emitted once the display is on again. */
    void asleepChanged(bool asleep);

private:
    struct Key
    {
        int key = 0;          ///< Qt::Key; may differ between press and release if a modifier changes
        quint32 scanCode = 0; ///< identifies the physical key; 0 if unknown
    };

    bool isWakingKey(const QKeyEvent& event) const;
    bool onKey(const QKeyEvent& event);
    void onInhibition(bool isInhibited);
    void restart();
    void startTimer(std::chrono::milliseconds delay);
    void onTimeout();
    void sleep();
    void wake();
    QCoro::Task<> finishWaking();

    QWindow& m_window;
    Clock& m_clock;
    DisplayPower& m_power;
    std::chrono::milliseconds m_delay;
    std::chrono::milliseconds m_idleSince{0}; ///< time of the last key or end of playback, on m_clock
    std::unique_ptr<Clock::Timer> m_timer;    ///< null while something plays
    bool m_isAsleep = false;                  ///< the window shows black
    bool m_isOff = false;                     ///< the display has been switched off
    std::optional<Key> m_wakingKey;           ///< woke the display and may still be held down
    quint64 m_releasedAt = 0; ///< time stamp of its last release, in milliseconds; 0 while it is held down
    TaskScope m_tasks;
};

} // namespace quillmere
