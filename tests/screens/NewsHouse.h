#pragma once

#include "FullScreenCover.h"
#include "MemoryDefaults.h"
#include "NewsController.h"
#include "ScriptedClock.h"
#include "ScriptedHttpClient.h"
#include "ScriptedVideoPlayer.h"
#include "Stage.h"

#include <QPointer>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/** The news channel opened over a front screen, with a scripted hub, scripted players and a scripted clock. */
class NewsHouse
{
public:
    static inline const QString five = u"/live/news/index.m3u8"_s;

    explicit NewsHouse(int channels = 0, QSize size = {1920, 1080}) : stage(size)
    {
        setChannels(channels);
        cover = stage.load(uR"(
            import Quillmere.News
            Canvas {
                id: canvas
                property QtObject store
                property QtObject hub
                property QtObject clock
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
                }
            })"_s,
                           {{u"store"_s, QVariant::fromValue<QObject*>(&store)},
                            {u"hub"_s, QVariant::fromValue<QObject*>(&hub)},
                            {u"clock"_s, QVariant::fromValue<QObject*>(&clock)}});
        cover = Stage::first(cover, "FullScreenCover");
        cover->setProperty("screen", cover->property("news"));
        view = Stage::first(cover, "NewsView");
        controller = view->findChild<NewsController*>();
        controller->setCreatePlayer([this](Clock&) {
            auto newPlayer = std::make_shared<ScriptedVideoPlayer>();
            players.append(newPlayer.get());
            return newPlayer;
        });
    }

    ScriptedClock clock;
    ScriptedHttpClient http;
    HubAPI hub{http, QUrl(u"https://hub.example"_s)};
    MemoryDefaults defaults;
    Store store{hub, defaults};
    Stage stage;
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
            status.news.channels.insert(QString::number(number),
                                        {u"Station %1"_s.arg(number), u"/live/%1/index.m3u8"_s.arg(number)});
        store.setStatus(status);
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

    void press(int key)
    {
        stage.press(key);
        stage.waitForFrame();
    }

    QQuickItem* item(const QByteArray& type) const { return view ? Stage::first(view, type) : nullptr; }
    bool shows(const QByteArray& type) const { return item(type) && item(type)->isVisible(); }

    /** Whether a visible text has exactly these words. */
    bool showsText(const QString& words) const
    {
        const auto texts = Stage::texts(view);
        return std::any_of(texts.begin(), texts.end(),
                           [&](const QQuickItem* text) { return text->property("text").toString() == words; });
    }

    Focusable* focused() const { return qobject_cast<FocusScreen*>(view.data())->focused(); }

    /** The name of the station whose button has focus; "nothing" if none has it. */
    QString focusedStation() const
    {
        const Focusable* const button = focused();
        return button && button->hasActiveFocus() ? button->property("name").toString() : u"nothing"_s;
    }
};
