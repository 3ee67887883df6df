#pragma once

#include "ScriptedClock.h"
#include "ScriptedVideoPlugin.h"
#include "StreamPlayer.h"

#include "Completion.h"

#include <QCoreApplication>

/** The real player's rules on an engine and a clock that do what the test says. */
class StreamOnScript
{
public:
    // A plug-in that still comes finds its player gone, and no coroutine is left waiting for it.
    ~StreamOnScript() { arrives.resolve(false); }

    /** Reports, and what a player says later because of them. */
    static void deliver()
    {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    StreamPlayer::LoadPlugin loadPlugin()
    {
        return [this] { return loadOnce(); };
    }

    void setItem(PlayerItem::Kind kind = PlayerItem::Kind::Recording)
    {
        item = std::make_shared<PlayerItem>(url, kind);
        player->setItem(item);
    }

    /** Brings the engine to the point where it was told to load. */
    void start()
    {
        arrives.resolve(true);
        engine = plugin.latest.lock();
        tell([](VideoEngineListener& to) { to.engineReady(); });
        tell([](VideoEngineListener& to) { to.rendererReady(); });
    }

    /** An item of 120 seconds that plays, `at` seconds. */
    void playFrom(double at, PlayerItem::Kind kind = PlayerItem::Kind::Recording)
    {
        setItem(kind);
        player->seek(at, SeekTolerance::AtOrAfter);
        player->play();
        if (!engine)
            start();
        know(120);
        show(at);
    }

    // What the engine reports, of its latest load.
    template<typename Report>
    void tell(Report report)
    {
        engine->report(std::move(report));
        deliver();
    }
    int load() const { return engine->loads.last().number; }
    void show(double at)
    {
        tell([=, load = load()](VideoEngineListener& to) { to.pictureShown(load, at); });
    }
    void know(double duration)
    {
        tell([=, load = load()](VideoEngineListener& to) { to.durationKnown(load, duration); });
    }
    void report(double seconds)
    {
        tell([=, load = load()](VideoEngineListener& to) { to.positionMoved(load, seconds); });
    }
    /** Plays up to there in no time, a second at a time. */
    void moveTo(double seconds)
    {
        for (double at = player->position() + 0.9; player && at < seconds; at += 0.9)
            report(at);
        report(seconds);
    }
    /** What is out of line counts with the report that follows it. */
    void jumpTo(double seconds)
    {
        report(seconds);
        report(seconds + 0.04);
    }
    void skipData()
    {
        tell([load = load()](VideoEngineListener& to) { to.dataSkipped(load); });
    }
    void wait(bool waiting)
    {
        tell([=, load = load()](VideoEngineListener& to) { to.waitingChanged(load, waiting); });
    }
    void land(double seconds)
    {
        tell([=, seek = engine->seeks.last()](VideoEngineListener& to) {
            to.seekDone(seek.load, seek.number, seconds);
        });
    }
    void endFile()
    {
        tell([load = load()](VideoEngineListener& to) { to.endOfFile(load); });
    }
    void fail(const VideoFailure& failure)
    {
        tell([=, load = load()](VideoEngineListener& to) { to.loadFailed(load, failure); });
    }

    ScriptedClock clock;
    ScriptedVideoPlugin plugin;
    Completion<bool> arrives; ///< the plug-in; false when it cannot be loaded
    int pluginLoads = 0;
    const QUrl url{QStringLiteral("https://hub.example/tape.m3u8")};
    std::shared_ptr<PlayerItem> item;
    std::shared_ptr<ScriptedVideoEngine> engine; ///< from `start`
    std::unique_ptr<StreamPlayer> player = std::make_unique<StreamPlayer>(VideoOptions{}, clock, loadPlugin());

private:
    QCoro::Task<tl::expected<VideoPlugin*, QString>> loadOnce()
    {
        ++pluginLoads;
        const Completion<bool> arrived = arrives;
        if (co_await arrived)
            co_return &plugin;
        co_return tl::unexpected(QStringLiteral("not there"));
    }
};
