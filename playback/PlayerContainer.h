#pragma once

#include "MetadataItem.h"
#include "StreamPlayers.h"
#include "VideoPlayer.h"

#include <QList>
#include <QObject>
#include <QUrl>

#include <memory>

class Coordinator;
class DesktopPresence;
class PlayerController;

/**
 * Hosts the player of one stream: made, it plays. Screen thread only; the screen's controller owns it, and the clock
 * outlives it. Dismantled, it keeps its controller, which then has no player.
 */
class PlayerContainer : public QObject
{
    Q_OBJECT

public:
    /** `startAt` in seconds; up to 1.0 it is the top. `metadata` is what the viewer and the desktop are told. */
    PlayerContainer(const QUrl& url, double startAt, const QList<MetadataItem>& metadata, Clock& clock,
                    const MakePlayer& makePlayer = &makeStreamPlayer);
    ~PlayerContainer() override;

    /** None once it is dismantled. */
    VideoPlayer* player() const { return m_player.get(); }
    PlayerController* controller() const { return m_controller.get(); }

    /** Ends picture and sound at once; nothing is told any more. Safe twice. */
    void dismantle();

Q_SIGNALS:
    void playerChanged();

    /** How far it has come, in seconds; every 10 seconds of play time. */
    void progress(double seconds);
    void finished();
    void failure(const QString& message);

    /** The viewer leaves the player, by a key or from the desktop. */
    void leave();

private:
    std::shared_ptr<VideoPlayer> m_player;
    std::unique_ptr<PlayerController> m_controller;
    std::unique_ptr<Coordinator> m_coordinator;
    std::unique_ptr<DesktopPresence> m_presence;
};
