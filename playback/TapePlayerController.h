#pragma once

#include "Clock.h"
#include "PlayerContainer.h"
#include "PlayerController.h"
#include "Store.h"
#include "VHSCover.h"

#include <QPointer>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * State of the screen that plays a tape: creates the player, stores the resume position, and provides the message for a
 * tape that does not play. Screen thread only; the screen creates and owns it; store and clock must outlive it.
 */
class TapePlayerController : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(quillmere::Store* store MEMBER m_store NOTIFY storeChanged REQUIRED FINAL)
    Q_PROPERTY(quillmere::Clock* clock MEMBER m_clock NOTIFY clockChanged REQUIRED FINAL)
    // Changes of these after completion have no effect.
    Q_PROPERTY(quillmere::Tape tape READ tape WRITE setTape FINAL)
    Q_PROPERTY(quillmere::VHSCover cover READ cover WRITE setCover FINAL)
    /** Start position in seconds. */
    Q_PROPERTY(double startAt MEMBER m_startAt FINAL)

    /** Null if there is nothing to play, and after `tearDown`. */
    Q_PROPERTY(quillmere::VideoPlayer* player READ player NOTIFY playerChanged FINAL)
    /** Null if there is nothing to play. */
    Q_PROPERTY(quillmere::PlayerController* controls READ controls NOTIFY playerChanged FINAL)
    /** Message for the viewer if the tape does not play, else empty. */
    Q_PROPERTY(QString failure READ failure NOTIFY failureChanged FINAL)
    Q_PROPERTY(bool failed READ hasFailed NOTIFY failureChanged FINAL)

public:
    using QObject::QObject;

    // Assigned even if equal: tapes are equal if their ids are, so a newer record equals the old one.
    const Tape& tape() const { return m_tape; }
    void setTape(Tape tape) { m_tape = std::move(tape); }
    const VHSCover& cover() const { return m_cover; }
    void setCover(VHSCover cover) { m_cover = std::move(cover); }

    /** Function that creates the player; set before completion. */
    void setCreatePlayer(CreatePlayer createPlayer) { m_createPlayer = std::move(createPlayer); }

    VideoPlayer* player() const { return m_container ? m_container->player() : nullptr; }
    PlayerController* controls() const { return m_container ? m_container->controller() : nullptr; }
    const QString& failure() const { return m_failure; }
    bool hasFailed() const { return !m_failure.isEmpty(); }

    void classBegin() override {}

    /** Starts to play. A tape without a stream address fails instead, and no player is created. */
    void componentComplete() override;

    /** Handles a key press (a Qt::Key); returns whether it was used. Without a player only back and stop are used. */
    Q_INVOKABLE bool press(int key, bool isAutoRepeat);
    Q_INVOKABLE bool release(int key);

    /** Stops picture and sound at once, while the screen may still slide out. May be called twice. */
    Q_INVOKABLE void tearDown();

Q_SIGNALS:
    void storeChanged();
    void clockChanged();
    void playerChanged();
    void failureChanged();

    /** The viewer wants to leave the tape. */
    void dismissRequested();

private:
    void play(const QUrl& url);
    void fail(const QString& message);

    QPointer<Store> m_store;
    QPointer<Clock> m_clock;
    CreatePlayer m_createPlayer = &createStreamPlayer;
    Tape m_tape;
    VHSCover m_cover;
    double m_startAt = 0;
    QString m_failure;
    std::unique_ptr<PlayerContainer> m_container;
};

} // namespace quillmere
