#pragma once

#include "Clock.h"
#include "HubAPI.h"
#include "MemoryDefaults.h"
#include "ScriptedClock.h"
#include "ScriptedHttpClient.h"
#include "Stage.h"
#include "Store.h"

#include <algorithm>

/** The front screen with a scripted network and clock. */
struct FrontHouse
{
    ScriptedHttpClient http;
    HubAPI hub{http, QUrl(QStringLiteral("https://hub.example.org"))};
    MemoryDefaults defaults;
    Store store{hub, defaults};
    ScriptedClock clock;
    Stage stage;
    QQuickItem* view = nullptr;

    explicit FrontHouse(QSize size = {1920, 1080}, const QString& doors = {}) : stage(size)
    {
        QQuickItem* root =
            stage.load(QStringLiteral("Canvas { property QtObject store; property QtObject clock; LandingView { "
                                      "anchors.fill: parent; focus: true; store: parent.store; clock: parent.clock; "
                                      "%1 } }")
                           .arg(doors),
                       {{QStringLiteral("store"), QVariant::fromValue<QObject*>(&store)},
                        {QStringLiteral("clock"), QVariant::fromValue<QObject*>(&clock)}});
        if (!root)
            qFatal("The front screen does not load.");
        view = Stage::first(root, "LandingView");
    }

    QQuickItem* newsDoor() { return Stage::first(view, "NewsDoor"); }
    QQuickItem* storeDoor() { return Stage::first(view, "StoreDoor"); }

    bool isCovered() { return Stage::first(view, "FullScreenCover")->property("item").value<QQuickItem*>(); }

    bool shows(const QString& text)
    {
        const auto texts = Stage::texts(view);
        return std::any_of(texts.begin(), texts.end(),
                           [&](const QQuickItem* item) { return item->property("text").toString() == text; });
    }

    void setNews(bool live, const QString& title, const QString& next = {})
    {
        TVStatus status = store.status();
        status.news.towerLive = live;
        status.news.programTitle = title;
        status.news.nextBroadcastLabel = next;
        store.setStatus(status);
    }

    int statusRequests()
    {
        int count = 0;
        for (int call = 0; call < http.count(); ++call)
            count += http.request(call).url.path() == QStringLiteral("/api/tv/status");
        return count;
    }
};
