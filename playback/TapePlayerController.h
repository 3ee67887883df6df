#pragma once

#include "PlayerContainer.h"
#include "PlayerController.h"
#include "Store.h"
#include "Timepiece.h"
#include "VHSCover.h"

#include <QPointer>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

/**
 * The state of the screen that plays a tape: whether there is anything to play, where the tape has come to, and what the
 * viewer reads when it does not play. Screen thread only; the screen makes and owns it; store and timepiece outlive it.
 */
class TapePlayerController : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    Q_PROPERTY(Timepiece* timepiece READ timepiece WRITE setTimepiece NOTIFY timepieceChanged REQUIRED FINAL)
    // What comes of these once the tape plays changes nothing.
    Q_PROPERTY(Tape tape READ tape WRITE setTape FINAL)
    Q_PROPERTY(VHSCover cover READ cover WRITE setCover FINAL)
    /** Where the tape starts, in seconds. */
    Q_PROPERTY(double startAt MEMBER m_startAt FINAL)

    /** None when there is nothing to play, and once it is dismantled. */
    Q_PROPERTY(VideoPlayer* player READ player NOTIFY playerChanged FINAL)
    /** None when there is nothing to play. */
    Q_PROPERTY(PlayerController* controls READ controls NOTIFY playerChanged FINAL)
    /** What the viewer reads when the tape does not play; empty while it does. */
    Q_PROPERTY(QString failure READ failure NOTIFY failureChanged FINAL)
    Q_PROPERTY(bool failed READ hasFailed NOTIFY failureChanged FINAL)

public:
    using QObject::QObject;

    Store* store() const { return m_store; }
    void setStore(Store* store);
    Timepiece* timepiece() const { return m_timepiece; }
    void setTimepiece(Timepiece* timepiece);

    // Every tape is taken, as a fresher record equals the one it replaces.
    const Tape& tape() const { return m_tape; }
    void setTape(Tape tape) { m_tape = std::move(tape); }
    const VHSCover& cover() const { return m_cover; }
    void setCover(VHSCover cover) { m_cover = std::move(cover); }

    /** How players are made, before completion. */
    void setMakePlayer(MakePlayer makePlayer) { m_makePlayer = std::move(makePlayer); }

    VideoPlayer* player() const { return m_container ? m_container->player() : nullptr; }
    PlayerController* controls() const { return m_container ? m_container->controller() : nullptr; }
    const QString& failure() const { return m_failure; }
    bool hasFailed() const { return !m_failure.isEmpty(); }

    void classBegin() override {}

    /** Starts to play; a tape without a stream fails instead, and no player is made. */
    void componentComplete() override;

    /** Takes a remote's key (a Qt::Key); answers whether it meant something here. Without a player back and stop leave. */
    Q_INVOKABLE bool press(int key, bool isAutoRepeat);
    Q_INVOKABLE bool release(int key);

    /** Ends picture and sound at once, although the screen may still be seen for a moment. Safe twice. */
    Q_INVOKABLE void dismantle();

Q_SIGNALS:
    void storeChanged();
    void timepieceChanged();
    void playerChanged();
    void failureChanged();

    /** The viewer leaves the tape. */
    void leave();

private:
    void play(const QUrl& url);
    void fail(const QString& message);

    QPointer<Store> m_store;
    QPointer<Timepiece> m_timepiece;
    MakePlayer m_makePlayer = &makeStreamPlayer;
    Tape m_tape;
    VHSCover m_cover;
    double m_startAt = 0;
    QString m_failure;
    std::unique_ptr<PlayerContainer> m_container;
};
