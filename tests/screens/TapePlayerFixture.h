#pragma once

#include "SampleCover.h"
#include "ScreenFixture.h"
#include "ScriptedVideoPlayer.h"
#include "TapePlayerController.h"

#include <QPointer>
#include <QSignalSpy>

namespace quillmere {

/** The screen that plays a tape, with a scripted player. */
struct TapePlayerFixture : ScreenFixture
{
    static constexpr double length = 3725; // seconds
    static constexpr QRectF safeArea{80, 60, 1760, 960};

    static Tape tape(const QString& path = u"/media/42/index.m3u8"_s)
    {
        Tape tape;
        tape.id = 42;
        tape.streamURLPath = path;
        return tape;
    }

    explicit TapePlayerFixture(const Tape& played = tape(), const VHSCover& cover = cassette(), double startAt = 0)
    {
        view = openScreen("import Quillmere.Playback\nTapePlayerView {}",
                          {{u"store"_s, QVariant::fromValue(store.get())},
                           {u"clock"_s, QVariant::fromValue<Clock*>(&clock)},
                           {u"tape"_s, QVariant::fromValue(played)},
                           {u"cover"_s, QVariant::fromValue(cover)},
                           {u"startAt"_s, startAt}},
                          [this](FocusScreen* screen) {
                              controller = screen->findChild<TapePlayerController*>();
                              controller->setCreatePlayer([this](Clock&) {
                                  auto newPlayer = std::make_shared<ScriptedVideoPlayer>();
                                  player = newPlayer.get();
                                  return newPlayer;
                              });
                          });
        dismissals = std::make_unique<QSignalSpy>(view, SIGNAL(dismissed()));
        waitUntilIdle();
    }

    QPointer<ScriptedVideoPlayer> player;
    FocusScreen* view = nullptr;
    TapePlayerController* controller = nullptr;
    std::unique_ptr<QSignalSpy> dismissals;

    static VHSCover cassette()
    {
        VHSCover cover = sampleCover();
        cover.bodyName = u"City Council"_s;
        cover.synopsis = u"Seven members, one gavel, and a fog that would not lift. The council hears the harbor's "
                         "case for a new ferry landing, and nobody leaves before the vote."_s;
        return cover;
    }

    /** A cover whose texts are all longer than any screen. */
    static VHSCover endless()
    {
        VHSCover cover = cassette();
        cover.title = u"A title of many words "_s.repeated(100);
        cover.bodyName = u"Joint Committee on Committees "_s.repeated(100);
        cover.synopsis = u"And then the clerk read on. "_s.repeated(2000);
        return cover;
    }

    static MediaTrack track(int id, MediaTrack::Kind kind, const QString& title, bool isSelected = false)
    {
        return {id, kind, title, {}, isSelected};
    }

    static QList<MediaTrack> tracks(int selectedAudio = 1)
    {
        return {track(1, MediaTrack::Kind::Audio, u"English"_s, selectedAudio == 1),
                track(2, MediaTrack::Kind::Audio, u"Español"_s, selectedAudio == 2),
                track(1, MediaTrack::Kind::Subtitle, u"English captions"_s),
                track(2, MediaTrack::Kind::Subtitle, u"Subtítulos"_s)};
    }

    /** Lets the stream start: the picture appears, and the duration, position and buffer are known. */
    void play(double position = 605)
    {
        player->setDuration(length);
        player->setSeekable(true);
        player->moveTo(position);
        player->setBufferedTo(position + 120);
        player->showPicture();
        waitUntilIdle();
    }

    void wait(std::chrono::milliseconds time)
    {
        clock.advance(time);
        waitUntilIdle();
    }

    /** The visible texts of one part of the screen. */
    QStringList read(const QByteArray& type) const { return words(item(type)); }
};

} // namespace quillmere
