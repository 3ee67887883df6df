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

/** The screen that plays a tape in front of a viewer, with a scripted player and a clock that the test moves. */
class TapePlayerHouse
{
public:
    static constexpr double length = 3725; // seconds

    explicit TapePlayerHouse(const Tape& tape, const VHSCover& cover = cassette(), double startAt = 0,
                             QSize size = {1920, 1080})
        : stage(size)
    {
        canvas = stage.put(u"Canvas { focus: true }"_s);
        QQmlComponent component(&stage.engine());
        component.setData("import Quillmere.Playback\nTapePlayerView {}", {});
        QObject* const root = component.beginCreate(stage.engine().rootContext());
        component.setInitialProperties(root, {{u"store"_s, QVariant::fromValue(&store)},
                                              {u"timepiece"_s, QVariant::fromValue(&timepiece)},
                                              {u"tape"_s, QVariant::fromValue(tape)},
                                              {u"cover"_s, QVariant::fromValue(cover)},
                                              {u"startAt"_s, startAt}});
        view = qobject_cast<FocusScreen*>(root);
        if (!view)
            qFatal("%s", qPrintable(component.errorString()));
        controller = view->findChild<TapePlayerController*>();
        controller->setMakePlayer([this](Clock&) {
            auto made = std::make_shared<ScriptedVideoPlayer>();
            player = made.get();
            return made;
        });
        view->setParent(canvas);
        view->setParentItem(canvas);
        view->setSize(canvas->size());
        component.completeCreate();
        dismissals = std::make_unique<QSignalSpy>(view, SIGNAL(dismissed()));
        view->takeFocus();
        Q_EMIT view->appeared();
        stage.settle();
    }

    ScriptedClock clock;
    Timepiece timepiece{clock};
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
        Tape made;
        made.id = 42;
        made.streamURLPath = path;
        return made;
    }

    static VHSCover cassette()
    {
        VHSCover cover = sampleCover();
        cover.bodyName = u"City Council"_s;
        cover.synopsis = u"Seven members, one gavel, and a fog that would not lift. The council hears the harbor's "
                         "case for a new ferry landing, and nobody leaves before the vote."_s;
        return cover;
    }

    /** With more words in every text than any screen has room for. */
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

    /** The picture is there, and all that is known of the stream. */
    void play(double position = 605)
    {
        player->setDuration(length);
        player->setSeekable(true);
        player->moveTo(position);
        player->setBufferedTo(position + 120);
        player->showPicture();
        stage.settle();
    }

    void press(int key)
    {
        stage.press(key);
        stage.settle();
    }

    void wait(std::chrono::milliseconds time)
    {
        clock.advance(time);
        stage.settle();
    }

    QQuickItem* piece(const QByteArray& type) const { return Stage::first(view, type); }
    bool shows(const QByteArray& type) const { return piece(type) && piece(type)->isVisible(); }

    /** The texts that a viewer can read on a piece of the screen. */
    QStringList read(const QByteArray& type) const
    {
        QStringList all;
        for (const QQuickItem* text : Stage::texts(piece(type)))
            all.append(text->property("text").toString());
        return all;
    }

    /** The visible Text that says this; null when there is none. */
    QQuickItem* text(const QString& words) const
    {
        for (QQuickItem* item : Stage::texts(view)) {
            if (item->property("text").toString() == words)
                return item;
        }
        return nullptr;
    }

    /** What the button with the focus is called. */
    QString focused() const
    {
        const Focusable* const focusable = view->focused();
        return focusable && focusable->hasActiveFocus() ? focusable->property("name").toString() : u"nothing"_s;
    }
};
