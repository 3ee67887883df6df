#pragma once

#include "PlayerItem.h"
#include "VideoPlayer.h"

#include <QObject>

#include <functional>
#include <memory>

/**
 * Watches one playback: starts it, and tells how far it has come, that the item was played to its end, and that it
 * failed. Screen thread only; its PlayerContainer owns it. It shares the player until it is torn down; what arrives after
 * that is dropped.
 */
class Coordinator : public QObject
{
    Q_OBJECT

public:
    using OnProgress = std::function<void(double seconds)>;
    using OnFinished = std::function<void()>;
    using OnFailure = std::function<void(const QString& message)>;

    Coordinator(OnProgress onProgress, OnFinished onFinished, OnFailure onFailure);
    ~Coordinator() override;

    /** Starts to play at `startAt` seconds, from the top up to 1.0; the player has the item already. */
    void attach(std::shared_ptr<VideoPlayer> player, const PlayerItem& item, double startAt);

    /** Lets go of the player and of all that was to be told of it. Safe twice. */
    void tearDown();

private:
    void start(double startAt);
    void observeStatus(const PlayerItem& item);

    OnProgress m_onProgress;
    OnFinished m_onFinished;
    OnFailure m_onFailure;
    std::shared_ptr<VideoPlayer> m_player;
    std::unique_ptr<TimeObserver> m_timeObserver;
    QMetaObject::Connection m_statusObservation;
    QMetaObject::Connection m_endObserver;
};
