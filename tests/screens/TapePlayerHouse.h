#pragma once

#include "FocusScreen.h"
#include "HubAPI.h"
#include "MemoryDefaults.h"
#include "SampleCover.h"
#include "ScriptedClock.h"
#include "ScriptedHttpClient.h"
#include "ScriptedVideoPlayer.h"
#include "Stage.h"
#include "Store.h"
#include "TapePlayerController.h"

#include <QPointer>
#include <QQmlComponent>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/** The screen that plays a tape, with a scripted player and a scripted clock. */
class TapePlayerHouse
{
public:
    static constexpr double length = 3725; // seconds

    explicit TapePlayerHouse(const Tape& tape, const VHSCover& cover = cassette(), double startAt = 0,
                             QSize size = {1920, 1080})
        : stage(size)
    {
        canvas = stage.load(u"Canvas { focus: true }"_s);
        QQmlComponent component(&stage.engine());
        component.setData("import Quillmere.Playback\nTapePlayerView {}", {});
        QObject* const root = component.beginCreate(stage.engine().rootContext());
        component.setInitialProperties(root, {{u"store"_s, QVariant::fromValue(&store)},
                                              {u"clock"_s, QVariant::fromValue<Clock*>(&clock)},
                                              {u"tape"_s, QVariant::fromValue(tape)},
                                              {u"cover"_s, QVariant::fromValue(cover)},
                                              {u"startAt"_s, startAt}});
        view = qobject_cast<FocusScreen*>(root);
        if (!view)
            qFatal("%s", qPrintable(component.errorString()));
        controller = view->findChild<TapePlayerController*>();
        controller->setCreatePlayer([this](Clock&) {
            auto newPlayer = std::make_shared<ScriptedVideoPlayer>();
            player = newPlayer.get();
            return newPlayer;
        });
        view->setParent(canvas);
        view->setParentItem(canvas);
        view->setSize(canvas->size());
        component.completeCreate();
        dismissals = std::make_unique<QSignalSpy>(view, SIGNAL(dismissed()));
        view->acquireFocus();
        Q_EMIT view->appeared();
        stage.waitUntilIdle();
    }

    ScriptedClock clock;
    ScriptedHttpClient http;
    HubAPI hub{http, QUrl(u"https://hub.example"_s)};
    MemoryDefaults defaults;
    Store store{hub, defaults};
    QPointer<ScriptedVideoPlayer> player;
    Stage stage;
    QQuickItem* canvas = nullptr;
    FocusScreen* view = nullptr;
    TapePlayerController* controller = nullptr;
    std::unique_ptr<QSignalSpy> dismissals;

    static Tape tape(const QString& path = u"/media/42/index.m3u8"_s)
    {
        Tape tape;
        tape.id = 42;
        tape.streamURLPath = path;
        return tape;
    }

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

    static QList<MediaTrack> tracks()
    {
        return {track(1, MediaTrack::Kind::Audio, u"English"_s, true), track(2, MediaTrack::Kind::Audio, u"Español"_s),
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
        stage.waitUntilIdle();
    }

    void press(int key)
    {
        stage.press(key);
        stage.waitUntilIdle();
    }

    void wait(std::chrono::milliseconds time)
    {
        clock.advance(time);
        stage.waitUntilIdle();
    }

    QQuickItem* item(const QByteArray& type) const { return Stage::first(view, type); }
    bool shows(const QByteArray& type) const { return item(type) && item(type)->isVisible(); }

    /** The visible texts of one part of the screen. */
    QStringList read(const QByteArray& type) const
    {
        QStringList all;
        for (const QQuickItem* text : Stage::texts(item(type)))
            all.append(text->property("text").toString());
        return all;
    }

    /** The visible text item with exactly these words; null if there is none. */
    QQuickItem* text(const QString& words) const
    {
        for (QQuickItem* item : Stage::texts(view)) {
            if (item->property("text").toString() == words)
                return item;
        }
        return nullptr;
    }

    /** The accessible name of the focused button; "nothing" if no button has focus. */
    QString focused() const
    {
        const Focusable* const focusable = view->focused();
        return focusable && focusable->hasActiveFocus() ? focusable->property("name").toString() : u"nothing"_s;
    }
};
