#pragma once

#include "FullScreenCover.h"
#include "NewsController.h"
#include "ScreenFixture.h"
#include "ScriptedVideoPlayer.h"

#include <QPointer>

namespace quillmere {

/** The news channel opened over a front screen, with scripted players. */
struct NewsFixture : ScreenFixture
{
    static inline const QString five = u"/live/news/index.m3u8"_s;

    explicit NewsFixture(int channels = 0)
    {
        setChannels(channels);
        loadCanvas(u"import Quillmere.News"_s, uR"(
            FocusScreen {
                anchors.fill: parent
                focus: true
                FullScreenCover {
                    anchors.fill: parent
                    onDismissed: screen = null
                    property Component news: Component {
                        NewsView { store: canvas.store; hub: canvas.hub; clock: canvas.clock }
                    }
                }
            })"_s);
        cover = item("FullScreenCover");
        cover->setProperty("screen", cover->property("news"));
        view = item("NewsView");
        controller = view->findChild<NewsController*>();
        controller->setCreatePlayer([this](Clock&) {
            auto newPlayer = std::make_shared<ScriptedVideoPlayer>();
            players.append(newPlayer.get());
            return newPlayer;
        });
    }

    QQuickItem* cover = nullptr;
    QPointer<QQuickItem> view;
    QPointer<NewsController> controller;
    QList<QPointer<ScriptedVideoPlayer>> players;

    /** Waits until the screen has slid in completely. */
    bool hasSlidIn() const
    {
        return QTest::qWaitFor([this] { return view->y() == 0; });
    }

    /**
     * Sets a status with a programme and with `channels` channels, numbered from 6, in addition to the built-in one.
     */
    void setChannels(int channels)
    {
        TVStatus status;
        status.news.programTitle = u"The Harbor Report"_s;
        status.news.programNote = u"Fog, ferries and the vote"_s;
        for (int number = 6; number < 6 + channels; ++number)
            status.news.channels.insert(QString::number(number), {u"Station %1"_s.arg(number), path(number)});
        store->setStatus(status);
    }

    void changeNews(const std::function<void(NewsStatus&)>& change)
    {
        TVStatus status = store->status();
        change(status.news);
        store->setStatus(status);
    }
    void addChannelTwo()
    {
        changeNews([](NewsStatus& news) { news.channels.insert(u"2"_s, {u"Channel Two"_s, u"/live/two.m3u8"_s}); });
    }

    static QString path(int number) { return u"/live/%1/index.m3u8"_s.arg(number); }

    /** Answers the waiting probe and fails the refresh that follows it, so that the pass ends and its pause begins. */
    void answerPass(bool lit, const QString& path = five)
    {
        if (http.waitingFor(path) < 0)
            qFatal("no probe of %s waits", qPrintable(path));
        http.answer(http.waitingFor(path), lit ? 200 : 404);
        http.fail(http.waitingFor(u"/api/tv/status"_s), u"not now"_s);
    }

    /** Lets the pause end and answers the next pass. */
    void answerNextPass(bool lit, const QString& path = five)
    {
        clock.advance(6s);
        answerPass(lit, path);
    }

    bool showsLowerThird() const { return item("LowerThird")->property("shown").toBool(); }

    void pressAndDraw(int key)
    {
        press(key);
        waitForFrame();
    }
};

struct OnAirFixture : NewsFixture
{
    explicit OnAirFixture(int channels = 0) : NewsFixture(channels)
    {
        answerPass(true);
        waitForFrame();
    }
};

} // namespace quillmere
