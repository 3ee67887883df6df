#pragma once

#include "PlayerController.h"
#include "ScriptedClock.h"
#include "ScriptedVideoPlayer.h"

#include <QSignalSpy>

#include <optional>

namespace quillmere {

/** A scripted player with its controller. By default a recording of one hour plays at ten minutes. */
struct PlayerControllerFixture
{
    explicit PlayerControllerFixture(PlayerItem::Kind kind = PlayerItem::Kind::Recording)
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

    /** Presses the key and releases it 100 ms later. Returns whether the press was handled. */
    bool tap(int key)
    {
        const bool isHandled = controller.press(key);
        clock.advance(std::chrono::milliseconds(100));
        controller.release(key);
        return isHandled;
    }

    /** Presses the key and keeps it pressed for `time`, with the repeats of a held button. The caller releases it. */
    void hold(int key, std::chrono::milliseconds time)
    {
        const auto until = clock.elapsed() + time;
        controller.press(key);
        clock.advance(std::min(time, firstRepeat));
        while (clock.elapsed() < until) {
            controller.press(key, true);
            clock.advance(std::min(repeatInterval, until - clock.elapsed()));
        }
    }

    /** Holds the key for `time` and releases it. Returns whether the release was handled. */
    bool holdAndRelease(int key, std::chrono::milliseconds time)
    {
        hold(key, time);
        return controller.release(key);
    }

    /** All seek targets in seconds, in order. */
    QList<double> targets() const
    {
        QList<double> all;
        for (const ScriptedVideoPlayer::Seek& seek : player->seeks)
            all.append(seek.seconds);
        return all;
    }

    static constexpr std::chrono::milliseconds firstRepeat{400};
    static constexpr std::chrono::milliseconds repeatInterval{125};

    ScriptedClock clock;
    std::unique_ptr<ScriptedVideoPlayer> player = std::make_unique<ScriptedVideoPlayer>();
    std::shared_ptr<PlayerItem> item;
    PlayerController controller{clock};
    QSignalSpy dismissRequested{&controller, &PlayerController::dismissRequested};
};

} // namespace quillmere
