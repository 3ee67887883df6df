#pragma once

#include "MprisPlayer.h"
#include "ScreenSaverInhibitor.h"

#include <QObject>

#include <atomic>
#include <memory>

/**
 * The session bus's end of a DesktopPresence or a WakeLock: a connection of its own, with the inhibitor on it and, where
 * there is something to drive, the MPRIS player. Without a bus it does nothing. Made on the screen thread, it lives on
 * the desktop's, posts everything there, and destroys itself after `close`. Its signals are what programs on the bus ask
 * for.
 */
class DesktopLink : public QObject
{
    Q_OBJECT

public:
    struct Terms
    {
        QString busAddress;
        MprisPlayer::Application application;
        QString reason;         ///< why the screensaver is inhibited, for people
        bool isDrivable = true; ///< whether it has an MPRIS player
    };

    explicit DesktopLink(Terms terms);
    ~DesktopLink() override;

    // From the screen thread; each returns at once.
    void setPosition(qint64 microseconds) { m_position.store(microseconds, std::memory_order_relaxed); }
    void setState(const MprisState& state, bool inhibits);
    void tellSeeked(qint64 microseconds);
    /** The player is gone from the bus, and the screensaver allowed; nothing of this may be used any more. */
    void close();

Q_SIGNALS:
    void playRequested();
    void pauseRequested();
    void playPauseRequested();
    void stopRequested();
    void seekRequested(qint64 microseconds);
    void positionRequested(qint64 microseconds);

private:
    void open();
    void takeState(const MprisState& state, bool inhibits);
    void leave();

    Terms m_terms;
    QString m_connection; ///< its name in this process
    std::atomic<qint64> m_position = 0;
    std::atomic_bool m_closing = false;
    std::unique_ptr<ScreenSaverInhibitor> m_inhibitor;
    std::unique_ptr<MprisPlayer> m_mpris;
};
