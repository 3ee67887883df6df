#pragma once

#include "PlayerController.h"
#include "ScriptedClock.h"
#include "ScriptedVideoPlayer.h"

#include <QSignalSpy>

namespace quillmere {

/** A scripted player that, like a real one, moves its position to the seek target at once. */
class SeekingPlayer : public ScriptedVideoPlayer
{
public:
    void seek(double seconds, SeekTolerance tolerance, SeekCallback done = {}) override
    {
        ScriptedVideoPlayer::seek(seconds, tolerance, std::move(done));
        moveTo(seconds);
    }

    /** All seek targets in seconds, in order. */
    QList<double> targets() const
    {
        QList<double> all;
        for (const Seek& seek : seeks)
            all.append(seek.seconds);
        return all;
    }
};

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

    static constexpr std::chrono::milliseconds firstRepeat{400};
    static constexpr std::chrono::milliseconds repeatInterval{125};

    ScriptedClock clock;
    std::unique_ptr<SeekingPlayer> player = std::make_unique<SeekingPlayer>();
    std::shared_ptr<PlayerItem> item;
    PlayerController controller{clock};
};

} // namespace quillmere
