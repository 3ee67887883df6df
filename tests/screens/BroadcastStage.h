#pragma once

#include "Clock.h"
#include "NewsStatus.h"
#include "ScriptedClock.h"
#include "Stage.h"

#include <QFont>

#include <algorithm>

using namespace Qt::StringLiterals;

/** A broadcast graphic on the canvas, with the hub's news status and a clock that stands still. */
struct BroadcastStage
{
    ScriptedClock clock;
    Stage stage;
    QQuickItem* canvas = nullptr;

    /**
     * `qml` is the content of the canvas. It can use canvas.news, canvas.stations, canvas.station and canvas.clock.
     */
    explicit BroadcastStage(const QString& qml, QSize size = {1920, 1080}, const NewsStatus& news = {},
                            qsizetype current = 0)
        : stage(size)
    {
        const QString document = u"import Quillmere.Hub\nimport Quillmere.News\n"
                                 "Canvas { id: canvas; property newsStatus news; property var "
                                 "stations; property var station; "
                                 "property Clock clock; %1 }"_s;
        const QList<TunerStation> stations = news.stations();
        canvas = stage.load(document.arg(qml), {{u"news"_s, QVariant::fromValue(news)},
                                                {u"stations"_s, QVariant::fromValue(stations)},
                                                {u"station"_s, QVariant::fromValue(stations.at(current))},
                                                {u"clock"_s, QVariant::fromValue<Clock*>(&clock)}});
    }

    void setNews(const NewsStatus& news)
    {
        canvas->setProperty("news", QVariant::fromValue(news));
        stage.waitForFrame();
    }

    double factor() const { return canvas->scale(); }

    QQuickItem* first(const QByteArray& type) const { return Stage::first(canvas, type); }

    /** The geometry of an item in points of the canvas. */
    QRectF area(const QQuickItem* item) const
    {
        return item ? item->mapRectToItem(canvas, QRectF(QPointF(), item->size())) : QRectF();
    }

    /** The visible text item with exactly these words; null if there is none. */
    QQuickItem* text(const QString& words) const
    {
        const auto texts = Stage::texts(canvas);
        const auto found = std::find_if(texts.cbegin(), texts.cend(), [&words](const QQuickItem* item) {
            return item->property("text").toString() == words;
        });
        return found == texts.cend() ? nullptr : *found;
    }

    QRectF areaOf(const QString& words) const { return area(text(words)); }

    QFont fontOf(const QString& words) const { return text(words)->property("font").value<QFont>(); }
    QColor colorOf(const QString& words) const { return text(words)->property("color").value<QColor>(); }

    /** The colour of a picture at a point of the canvas. */
    QColor at(const QImage& picture, double x, double y) const
    {
        return picture.pixelColor(canvas->mapToScene({x, y}).toPoint());
    }

    /** The current picture of the window, even during an animation. */
    QImage picture()
    {
        stage.waitForFrame();
        return stage.window().grabWindow().convertToFormat(QImage::Format_RGB32);
    }
};
