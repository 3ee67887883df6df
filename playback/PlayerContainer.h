#pragma once

#include "Coordinator.h"
#include "MetadataItem.h"
#include "StreamPlayers.h"
#include "VideoPlayer.h"

#include <QList>
#include <QUrl>

#include <functional>
#include <memory>

namespace quillmere {

class DesktopPresence;
class PlayerController;

/**
 * Creates and owns everything that plays one stream: the player, its key controls, its Coordinator and its presence on
 * the desktop. Playback starts on construction. Screen thread only; owned by the screen's controller. The clock must
 * outlive it.
 */
class PlayerContainer
{
public:
    /** The Coordinator calls the first three; no call comes after `tearDown`. */
    struct Actions
    {
        Coordinator::OnProgress onProgress; ///< every 10 seconds of play time
        Coordinator::OnFinished onFinished;
        Coordinator::OnFailure onFailure;
        std::function<void()> onDismiss; ///< the viewer wants to leave the player, by a key or from the desktop
    };

    /** `startAt` in seconds; up to 1.0 is the beginning. `metadata` is shown to the viewer and on the desktop. */
    PlayerContainer(const QUrl& url, double startAt, const QList<MetadataItem>& metadata, const Actions& actions,
                    Clock& clock, const CreatePlayer& createPlayer = &createStreamPlayer);
    ~PlayerContainer();

    /** Null after `tearDown`. */
    VideoPlayer* player() const { return m_player.get(); }
    /** Kept after `tearDown`, without a player. */
    PlayerController* controller() const { return m_controller.get(); }

    /**
     * Stops picture and sound at once. Returns the player, for the caller to keep until no view shows it; null if this
     * was called before.
     */
    std::shared_ptr<VideoPlayer> tearDown();

private:
    std::shared_ptr<VideoPlayer> m_player;
    std::unique_ptr<PlayerController> m_controller;
    std::unique_ptr<Coordinator> m_coordinator;
    std::unique_ptr<DesktopPresence> m_presence;
};

} // namespace quillmere
