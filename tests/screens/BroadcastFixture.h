#pragma once

#include "NewsStatus.h"
#include "ScreenFixture.h"

#include <QFont>

namespace quillmere {

/** A broadcast graphic on the canvas, with the hub's news status and a clock that stands still. */
struct BroadcastFixture : ScreenFixture
{
    /**
     * `qml` is the content of the canvas. It can use canvas.news, canvas.stations, canvas.station and canvas.clock.
     */
    explicit BroadcastFixture(const QString& qml, QSize size = {1920, 1080}, const NewsStatus& news = {},
                              qsizetype current = 0)
        : ScreenFixture(size)
    {
        const QList<TunerStation> stations = news.stations();
        loadCanvas(u"import Quillmere.Hub\nimport Quillmere.News"_s,
                   u"property newsStatus news; property var stations; property var station\n"_s + qml,
                   {{u"news"_s, QVariant::fromValue(news)},
                    {u"stations"_s, QVariant::fromValue(stations)},
                    {u"station"_s, QVariant::fromValue(stations.at(current))}});
    }

    void setNews(const NewsStatus& news)
    {
        canvas->setProperty("news", QVariant::fromValue(news));
        waitForFrame();
    }

    double factor() const { return canvas->scale(); }

    QFont fontOf(const QString& words) const { return text(words)->property("font").value<QFont>(); }
    QColor colorOf(const QString& words) const { return text(words)->property("color").value<QColor>(); }

    /** The colour of a picture at a point of the canvas. */
    QColor at(const QImage& picture, double x, double y) const
    {
        return picture.pixelColor(canvas->mapToScene({x, y}).toPoint());
    }
};

} // namespace quillmere
