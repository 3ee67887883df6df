#pragma once

#include "ScreenFixture.h"

#include <QTest>

#include <cmath>

namespace quillmere {

inline bool isClose(const QColor& seen, const QColor& wanted, int tolerance)
{
    return std::abs(seen.red() - wanted.red()) <= tolerance && std::abs(seen.green() - wanted.green()) <= tolerance &&
           std::abs(seen.blue() - wanted.blue()) <= tolerance;
}

/** The front screen. */
struct FrontFixture : ScreenFixture
{
    QQuickItem* view = nullptr;

    explicit FrontFixture(QSize size = {1920, 1080}, const QString& doors = {}) : ScreenFixture(size)
    {
        loadCanvas(
            {},
            u"LandingView { anchors.fill: parent; focus: true; store: canvas.store; clock: canvas.clock; %1 }"_s.arg(
                doors));
        view = item("LandingView");
    }

    QQuickItem* newsDoor() { return item("NewsDoor"); }
    QQuickItem* storeDoor() { return item("StoreDoor"); }

    bool isCovered() { return item("FullScreenCover")->property("item").value<QQuickItem*>(); }

    void setNews(bool live, const QString& title, const QString& next = {})
    {
        TVStatus status = store->status();
        status.news.towerLive = live;
        status.news.programTitle = title;
        status.news.nextBroadcastLabel = next;
        store->setStatus(status);
    }

    int statusRequests() { return requests(u"/api/tv/status"_s); }
};

} // namespace quillmere
