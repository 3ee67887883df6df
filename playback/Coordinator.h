#pragma once

#include "PlayerItem.h"
#include "VideoPlayer.h"

#include <QObject>

#include <functional>
#include <memory>

namespace quillmere {

/**
 * Controls one playback: starts the player, and reports progress, the end of the item and failures through callbacks.
 * Screen thread only; its PlayerContainer owns it. It shares ownership of the player until `tearDown`; later events are
 * ignored.
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

    /** Starts to play at `startAt` seconds; up to 1.0, from the beginning. The player must already have the item. */
    void attach(std::shared_ptr<VideoPlayer> player, const PlayerItem& item, double startAt);

    /** Releases the player; no callback is called afterwards. May be called twice. */
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

} // namespace quillmere
