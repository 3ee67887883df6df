#pragma once

#include "Clock.h"
#include "TaskScope.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <optional>

class DisplayPower;
class QKeyEvent;
class QWindow;

/**
 * Switches the display off when no key has been pressed and nothing has played for some time, and on again with the next
 * key or when something plays. The key that wakes the display reaches nothing else: neither its press, nor its repeats,
 * nor its release.
 *
 * It filters the window's events and must be created before the window's RemoteInput, so that it sees the keys that
 * RemoteInput sends. Screen thread only; its owner destroys it before the window, the clock and the display power.
 */
class DisplaySleep : public QObject
{
    Q_OBJECT

public:
    DisplaySleep(QWindow& window, Clock& clock, DisplayPower& power, std::chrono::milliseconds delay);

    bool eventFilter(QObject* watched, QEvent* event) override;

    /** "20min", "90s", "1h" or a bare number of minutes; nothing if it is none of these. Zero means never. */
    static std::optional<std::chrono::milliseconds> parseDelay(const QString& text);

Q_SIGNALS:
    /** Asleep, the window shows black and draws nothing more; it is awake again once the display is on. */
    void asleepChanged(bool asleep);

private:
    struct Key
    {
        int key = 0;          ///< Qt::Key, which other keys held beside it may change
        quint32 scanCode = 0; ///< 0 if unknown
    };

    bool isWakingKey(const QKeyEvent& event) const;
    bool onKey(const QKeyEvent& event);
    void onInhibition(bool isInhibited);
    void restart();
    void startTimer(std::chrono::milliseconds delay);
    void onTimeout();
    void sleep();
    void wake();
    QCoro::Task<> showAgain();

    QWindow& m_window;
    Clock& m_clock;
    DisplayPower& m_power;
    std::chrono::milliseconds m_delay;
    std::chrono::milliseconds m_idleSince{0}; ///< on the clock
    std::unique_ptr<Clock::Timer> m_timer;    ///< none while something plays
    bool m_isAsleep = false;
    bool m_isOff = false;
    std::optional<Key> m_wakingKey; ///< woke the display and may still be held
    quint64 m_releasedAt = 0;       ///< time of its last release, in milliseconds; 0 while it is held
    TaskScope m_tasks;
};
