#pragma once

#include "NewsController.h"
#include "ScriptedVideoPlayer.h"
#include "StoreFixture.h"

#include <QPointer>

namespace quillmere {

/** The news channel's controller with scripted players. */
struct NewsControllerFixture : StoreFixture
{
    static inline const QString five = u"/live/news/index.m3u8"_s;
    static inline const QString seven = u"/live/seven/index.m3u8"_s;
    static inline const QString nine = u"/live/nine/index.m3u8"_s;
    static inline const QString status = u"/api/tv/status"_s;

    NewsControllerFixture()
    {
        screen->setStore(store.get());
        screen->setProperty("hub", QVariant::fromValue<HubAPI*>(&hub));
        screen->setProperty("clock", QVariant::fromValue<Clock*>(&clock));
        screen->setCreatePlayer([this](Clock&) {
            auto player = std::make_shared<ScriptedVideoPlayer>();
            players.append(player.get());
            calls.append(player->calls());
            return player;
        });
    }

    std::unique_ptr<NewsController> screen = std::make_unique<NewsController>();

    QList<QPointer<ScriptedVideoPlayer>> players; ///< all created players; null once destroyed
    QList<std::shared_ptr<const QStringList>> calls;

    static TunerStation station(const QString& number, const QString& path) { return {number, u"Label"_s, path}; }

    /** A status with channels 7 and 9 in addition to the built-in station. */
    static QByteArray threeStations(const QByteArray& hlsURL = "/live/news/index.m3u8")
    {
        return R"({"news": {"hls_url": ")" + hlsURL + R"(", "channels": {"7": {"label": "Seven", "path": "seven"},
            "9": {"label": "Nine", "path": "nine"}}}})";
    }

    /** Whether the latest request for this path is waiting for its answer. */
    bool isWaitingFor(const QString& path) const { return http.waitingFor(path) >= 0; }

    void probe(bool lit, const QString& path = five) { answer(path, "#EXTM3U", lit ? 200 : 404); }

    /** Answers or fails the status request and waits until the pass has started its pause. */
    void refresh(const QByteArray& body = "{}", int code = 200)
    {
        answer(status, body, code);
        waitForDecoding();
    }

    /** Runs one pass from its probe to its pause. */
    void pass(bool lit, const QString& path = five, const QByteArray& body = "{}")
    {
        probe(lit, path);
        refresh(body);
    }

    /** Lets the pause end, so that the next pass starts. */
    void pause() { clock.advance(6s); }

    /** Opens the screen and runs its first pass. */
    void open(bool lit, const QByteArray& body = "{}")
    {
        screen->appear();
        pass(lit, five, body);
    }

    ScriptedVideoPlayer* player() const { return players.isEmpty() ? nullptr : players.last().data(); }
    QString number() const { return screen->currentStation().number; }

    /** The states of the screen that hold. */
    QString state() const
    {
        const QList<std::pair<bool, QString>> states{{screen->isChecking(), u"checking"_s},
                                                     {screen->isLive(), u"live"_s},
                                                     {screen->player(), u"player"_s},
                                                     {screen->isLit(), u"lit"_s},
                                                     {screen->isOnStandby(), u"standby"_s}};
        QStringList names;
        for (const auto& [holds, name] : states) {
            if (holds)
                names.append(name);
        }
        return names.join(u' ');
    }
};

} // namespace quillmere
