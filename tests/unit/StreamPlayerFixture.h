#pragma once

#include "ScriptedClock.h"
#include "ScriptedVideoPlugin.h"
#include "StreamPlayer.h"

#include "Completion.h"

#include <QCoreApplication>

namespace quillmere {

using Cause = VideoFailure::Cause;
using Kind = PlayerItem::Kind;
using Listener = VideoEngineListener;
using Status = PlayerItem::Status;
using TimeControl = VideoPlayer::TimeControl;

inline const MediaTrack audioTrack{1, MediaTrack::Kind::Audio, {}, {}, true};

/** The real StreamPlayer on a scripted engine and a scripted clock. */
class StreamPlayerFixture
{
public:
    // Ends a load of the plug-in that is still waiting, so that no coroutine is left suspended.
    ~StreamPlayerFixture() { pluginLoaded.resolve(false); }

    /** Delivers the engine's reports, and the events that the player posts because of them. */
    static void deliver()
    {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    StreamPlayer::LoadPlugin loadPlugin()
    {
        return [this] { return loadOnce(); };
    }

    void setItem(Kind kind = Kind::Recording)
    {
        item = std::make_shared<PlayerItem>(url, kind);
        player->setItem(item);
    }

    /** Starts the engine and its renderer, after which it loads the item. */
    void start()
    {
        pluginLoaded.resolve(true);
        engine = plugin.latest.lock();
        notify([](Listener& to) { to.onEngineReady(); });
        notify([](Listener& to) { to.onRendererReady(); });
    }

    /** Loads an item of 120 seconds that is to play from `at` seconds. */
    void loadFrom(double at, Kind kind = Kind::Recording)
    {
        setItem(kind);
        player->seek(at, SeekTolerance::AtOrAfter);
        player->play();
        if (!engine)
            start();
        reportDuration(120);
    }

    /** As `loadFrom`, and shows its first picture. */
    void playFrom(double at, Kind kind = Kind::Recording)
    {
        loadFrom(at, kind);
        showPicture(at);
    }

    template<typename Report>
    void notify(Report report)
    {
        engine->report(std::move(report));
        deliver();
    }

    // The following functions report events of the engine's latest load.
    int load() const { return engine->loads.last().id; }
    template<typename... Values>
    void reportEvent(void (Listener::*event)(int, Values...), std::type_identity_t<Values>... values)
    {
        notify([=, load = load()](Listener& to) { (to.*event)(load, values...); });
    }
    void showPicture(double at) { reportEvent(&Listener::onPictureShown, at); }
    void reportDuration(double duration) { reportEvent(&Listener::onDurationKnown, duration); }
    void report(double seconds) { reportEvent(&Listener::onPositionChanged, seconds); }
    void skipData() { reportEvent(&Listener::onDataSkipped); }
    void setWaiting(bool waiting) { reportEvent(&Listener::onWaitingChanged, waiting); }
    void endFile() { reportEvent(&Listener::onEndOfFile); }
    void fail(const VideoFailure& failure) { reportEvent(&Listener::onLoadFailed, failure); }
    void finishSeek(double seconds)
    {
        notify([=, seek = engine->seeks.last()](Listener& to) { to.onSeekFinished(seek.load, seek.number, seconds); });
    }
    /** Waits `delay` for the next attempt to load a broken stream; its first picture is at `at`. */
    void reconnect(std::chrono::seconds delay, double at)
    {
        clock.advance(delay);
        showPicture(at);
    }
    /** Reports positions up to `seconds` in steps of 0.9 s, without advancing the clock. */
    void moveTo(double seconds)
    {
        for (double at = player->position() + 0.9; player && at < seconds; at += 0.9)
            report(at);
        report(seconds);
    }
    /** Reports two positions, as a position jump is accepted only with the second report. */
    void jumpTo(double seconds)
    {
        report(seconds);
        report(seconds + 0.04);
    }

    ScriptedClock clock;
    ScriptedVideoPlugin plugin;
    Completion<bool> pluginLoaded; ///< result of loading the plug-in; false if it cannot be loaded
    int pluginLoads = 0;
    const QUrl url{QStringLiteral("https://hub.example/tape.m3u8")};
    std::shared_ptr<PlayerItem> item;
    std::shared_ptr<ScriptedVideoEngine> engine; ///< set by `start`
    std::unique_ptr<StreamPlayer> player = std::make_unique<StreamPlayer>(VideoOptions{}, clock, loadPlugin());

private:
    QCoro::Task<tl::expected<VideoPlugin*, QString>> loadOnce()
    {
        ++pluginLoads;
        const Completion<bool> loaded = pluginLoaded;
        if (co_await loaded)
            co_return &plugin;
        co_return tl::unexpected(QStringLiteral("not there"));
    }
};

/** A player whose engine has started and loads an item. */
struct LoadingFixture : StreamPlayerFixture
{
    explicit LoadingFixture(Kind kind = Kind::Recording)
    {
        setItem(kind);
        start();
    }
};

/** A player that plays an item of 120 seconds from `at` seconds. */
struct PlayingFixture : StreamPlayerFixture
{
    explicit PlayingFixture(double at, Kind kind = Kind::Recording) { playFrom(at, kind); }
};

} // namespace quillmere
