#pragma once

#include "PlayerController.h"
#include "ScriptedClock.h"
#include "ScriptedVideoPlayer.h"

#include <QSignalSpy>

/** As every player does, it tells at once where a seek will end. */
class SeekingPlayer : public ScriptedVideoPlayer
{
public:
    void seek(double seconds, SeekTolerance tolerance, SeekDone done = {}) override
    {
        ScriptedVideoPlayer::seek(seconds, tolerance, std::move(done));
        moveTo(seconds);
    }

    /** Where it was sent, in order. */
    QList<double> targets() const
    {
        QList<double> all;
        for (const Seek& seek : seeks)
            all.append(seek.seconds);
        return all;
    }
};

/** A scripted player and its controls; an hour's recording plays at ten minutes, unless it is told otherwise. */
struct PlayerOnScript
{
    explicit PlayerOnScript(PlayerItem::Kind kind = PlayerItem::Kind::Recording)
        : item(std::make_shared<PlayerItem>(QUrl(QStringLiteral("https://hub.test/tape.m3u8")), kind))
    {
        controller.setPlayer(player.get());
        player->setItem(item);
        player->play();
        if (kind == PlayerItem::Kind::Recording) {
            player->setDuration(3600);
            player->setSeekable(true);
        }
        player->showPicture();
        player->moveTo(600);
    }

    /** A short press. */
    bool tap(int key)
    {
        const bool isUsed = controller.press(key);
        clock.advance(std::chrono::milliseconds(100));
        controller.release(key);
        return isUsed;
    }

    /** Presses and holds for so long, with the steps of a held button; the caller lets go. */
    void hold(int key, std::chrono::milliseconds time)
    {
        const auto until = clock.elapsed() + time;
        controller.press(key);
        clock.advance(std::min(time, firstStep));
        while (clock.elapsed() < until) {
            controller.press(key, true);
            clock.advance(std::min(pace, until - clock.elapsed()));
        }
    }

    static constexpr std::chrono::milliseconds firstStep{400};
    static constexpr std::chrono::milliseconds pace{125};

    ScriptedClock clock;
    std::unique_ptr<SeekingPlayer> player = std::make_unique<SeekingPlayer>();
    std::shared_ptr<PlayerItem> item;
    PlayerController controller{clock};
};
