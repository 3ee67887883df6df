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

/** The news channel over a front screen, in front of a viewer, with a scripted hub, players and a clock to be moved. */
class NewsHouse
{
public:
    static inline const QString five = u"/live/news/index.m3u8"_s;

    explicit NewsHouse(int channels = 0, QSize size = {1920, 1080}) : stage(size)
    {
        setChannels(channels);
        cover = stage.put(uR"(
            import Quillmere.News
            Canvas {
                id: canvas
                property QtObject store
                property QtObject hub
                property QtObject timepiece
                FocusScreen {
                    anchors.fill: parent
                    focus: true
                    FullScreenCover {
                        anchors.fill: parent
                        onDismissed: screen = null
                        property Component news: Component {
                            NewsView { store: canvas.store; hub: canvas.hub; timepiece: canvas.timepiece }
                        }
                    }
                }
            })"_s,
                          {{u"store"_s, QVariant::fromValue<QObject*>(&store)},
                           {u"hub"_s, QVariant::fromValue<QObject*>(&hub)},
                           {u"timepiece"_s, QVariant::fromValue<QObject*>(&timepiece)}});
        cover = Stage::first(cover, "FullScreenCover");
        cover->setProperty("screen", cover->property("news"));
        view = Stage::first(cover, "NewsView");
        controller = view->findChild<NewsController*>();
        controller->setMakePlayer([this](Clock&) {
            auto made = std::make_shared<ScriptedVideoPlayer>();
            players.append(made.get());
            return made;
        });
    }

    ScriptedClock clock;
    Timepiece timepiece{clock};
    ScriptedHttpClient http;
    HubAPI hub{http, QUrl(u"https://hub.example"_s)};
    MemoryDefaults defaults;
    Store store{hub, defaults};
    Stage stage;
    QQuickItem* cover = nullptr;
    QPointer<QQuickItem> view;
    QPointer<NewsController> controller;
    QList<QPointer<ScriptedVideoPlayer>> players;

    /** Waits until the screen has slid into its place. */
    bool hasArrived() const
    {
        return QTest::qWaitFor([this] { return view->y() == 0; });
    }

    /** The status as the hub last said it: a programme, and channels 6, 7, 8 and so on beside the built-in one. */
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

    /** Answers the probe that waits, and fails the refresh after it, so that the pass comes to its pause. */
    void pass(bool lit, const QString& path = five)
    {
        if (http.waitingFor(path) < 0)
            qFatal("no probe of %s waits", qPrintable(path));
        http.answer(http.waitingFor(path), lit ? 200 : 404);
        http.fail(http.waitingFor(u"/api/tv/status"_s), u"not now"_s);
    }

    /** The pause passes, and the next pass with it. */
    void nextPass(bool lit, const QString& path = five)
    {
        clock.advance(6s);
        pass(lit, path);
    }

    void press(int key)
    {
        stage.press(key);
        stage.waitForFrame();
    }

    QQuickItem* piece(const QByteArray& type) const { return view ? Stage::first(view, type) : nullptr; }
    bool shows(const QByteArray& type) const { return piece(type) && piece(type)->isVisible(); }

    /** Whether a viewer can read this somewhere on the screen. */
    bool reads(const QString& words) const
    {
        const auto texts = Stage::texts(view);
        return std::any_of(texts.begin(), texts.end(),
                           [&](const QQuickItem* text) { return text->property("text").toString() == words; });
    }

    Focusable* focused() const { return qobject_cast<FocusScreen*>(view.data())->focused(); }

    /** The station whose button holds the focus, by its name; nothing while none does. */
    QString focusedStation() const
    {
        const Focusable* const button = focused();
        return button && button->hasActiveFocus() ? button->property("name").toString() : u"nothing"_s;
    }
};
