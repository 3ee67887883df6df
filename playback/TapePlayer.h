#pragma once

#include "Tape.h"
#include "VideoPlayer.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>

/**
 * Plays one tape from its stream. Screen thread only; its TapePlayerView owns it, and destroying it ends the playback.
 */
class TapePlayer : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(Tape tape READ tape WRITE setTape)
    /** Where the tape starts, in seconds; before completion. */
    Q_PROPERTY(double startAt MEMBER m_startAt)
    Q_PROPERTY(VideoPlayer* player READ player NOTIFY playerChanged)
    Q_PROPERTY(QString failure READ failure NOTIFY failureChanged)

public:
    using MakePlayer = std::function<std::unique_ptr<VideoPlayer>()>;

    explicit TapePlayer(QObject* parent = nullptr);
    explicit TapePlayer(MakePlayer makePlayer, QObject* parent = nullptr);

    const Tape& tape() const { return m_tape; }

    /** Before completion. Takes every tape, as a fresher record equals the one it replaces. */
    void setTape(Tape tape) { m_tape = std::move(tape); }

    VideoPlayer* player() const { return m_player.get(); }

    /** What the viewer reads when the tape does not play; empty while it does. */
    QString failure() const { return m_failure; }

    void classBegin() override {}

    /** Starts to play; a tape without a stream fails instead, and no player is made. */
    void componentComplete() override;

    /**
     * Takes a remote's key (a Qt::Key); answers whether it meant something here. Select and play/pause hold the tape or
     * let it go on, play and pause do one of the two, stop and back leave.
     */
    Q_INVOKABLE bool press(int key);

    /** Ends picture and sound at once, although the screen may still be seen for a moment. */
    Q_INVOKABLE void end();

Q_SIGNALS:
    void playerChanged();
    void failureChanged();

    /** The viewer leaves the tape. */
    void leave();

private:
    void setPaused(bool paused);
    void fail(const QString& message);

    MakePlayer m_makePlayer;
    Tape m_tape;
    double m_startAt = 0;
    std::unique_ptr<VideoPlayer> m_player;
    QString m_failure;
};
