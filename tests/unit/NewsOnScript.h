#pragma once

#include "NewsController.h"
#include "ScriptedClock.h"
#include "ScriptedVideoPlayer.h"
#include "StoreOnScript.h"

#include <QPointer>

using namespace std::chrono_literals;

/** The news channel's controller on a hub, a clock and players that do what and when the test says. */
struct NewsOnScript
{
    static inline const QString five = u"/live/news/index.m3u8"_s;
    static inline const QString seven = u"/live/seven/index.m3u8"_s;
    static inline const QString nine = u"/live/nine/index.m3u8"_s;
    static inline const QString status = u"/api/tv/status"_s;

    NewsOnScript()
    {
        screen->setStore(store.store.get());
        screen->setHub(&store.hub);
        screen->setTimepiece(&timepiece);
        screen->setMakePlayer([this](Clock&) {
            auto player = std::make_shared<ScriptedVideoPlayer>();
            players.append(player.get());
            calls.append(player->calls());
            return player;
        });
    }

    ScriptedClock clock;
    Timepiece timepiece{clock};
    StoreOnScript store;
    std::unique_ptr<NewsController> screen = std::make_unique<NewsController>();

    QList<QPointer<ScriptedVideoPlayer>> players; ///< that were made, null once they are gone
    QList<std::shared_ptr<const QStringList>> calls;

    static TunerStation station(const QString& number, const QString& path) { return {number, u"Label"_s, path}; }

    /** A status with channels 7 and 9 beside the built-in one. */
    static QByteArray threeStations(const QByteArray& hlsURL = "/live/news/index.m3u8")
    {
        return R"({"news": {"hls_url": ")" + hlsURL + R"(", "channels": {"7": {"label": "Seven", "path": "seven"},
            "9": {"label": "Nine", "path": "nine"}}}})";
    }

    /** The latest request for this path waits. */
    bool asks(const QString& path) const { return store.http.waitingFor(path) >= 0; }
    int requests(const QString& path) const
    {
        int count = 0;
        for (int call = 0; call < store.http.count(); ++call)
            count += store.http.request(call).url.path() == path ? 1 : 0;
        return count;
    }

    void probe(bool lit, const QString& path = five) { store.answer(path, "#EXTM3U", lit ? 200 : 404); }

    /** Answers the status, or fails it, and lets the pass come to its pause. */
    void refresh(const QByteArray& body = "{}", int code = 200)
    {
        store.answer(status, body, code);
        store.settle();
    }

    /** One pass from its probe to its pause. */
    void pass(bool lit, const QString& path = five, const QByteArray& body = "{}")
    {
        probe(lit, path);
        refresh(body);
    }

    /** The pause passes, and the next pass begins. */
    void pause() { clock.advance(6s); }

    /** The screen opens and its first pass is over. */
    void open(bool lit, const QByteArray& body = "{}")
    {
        screen->appear();
        pass(lit, five, body);
    }

    ScriptedVideoPlayer* player() const { return players.isEmpty() ? nullptr : players.last().data(); }
    QString number() const { return screen->currentStation().number; }
};
