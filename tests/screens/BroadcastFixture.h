#pragma once

#include "NewsStatus.h"
#include "ScreenFixture.h"

#include <QFont>

#include <algorithm>
#include <cstdlib>

namespace quillmere {

inline int difference(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

inline bool isClose(QColor seen, QColor wanted, int tolerance = 2)
{
    return difference(seen.rgb(), wanted.rgb()) <= tolerance;
}

inline NewsStatus programme(const QString& title, const QString& note = {}, const QString& nextBroadcast = {},
                            const QString& label = {})
{
    NewsStatus news;
    news.programTitle = title;
    news.programNote = note;
    news.nextBroadcast = nextBroadcast;
    news.nextBroadcastLabel = label;
    return news;
}

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
    /** Sets a station of this name as the current one. */
    void setStation(const QString& label)
    {
        canvas->setProperty("station", QVariant::fromValue(TunerStation{u"5"_s, label, {}}));
        waitForFrame();
    }

    double factor() const { return canvas->scale(); }

    QFont fontOf(const QString& words) const { return text(words)->property("font").value<QFont>(); }
    QColor colorOf(const QString& words) const { return text(words)->property("color").value<QColor>(); }

    void verifyLook(const QString& words, const QFont& font, QColor color) const
    {
        QVERIFY2(text(words), qPrintable(words));
        QCOMPARE(fontOf(words), font);
        QCOMPARE(colorOf(words).rgba(), color.rgba());
    }

    /** The colour of a picture at a point of the canvas. */
    QColor at(const QImage& picture, double x, double y) const
    {
        return picture.pixelColor(canvas->mapToScene({x, y}).toPoint());
    }
};

/** The standby card; "checking" is a property of the canvas. */
struct StandbyFixture : BroadcastFixture
{
    explicit StandbyFixture(const NewsStatus& news, QSize size = {1920, 1080})
        : BroadcastFixture(u"property bool checking: false; StandbyCard { anchors.fill: parent; news: canvas.news; "
                           "station: canvas.station; checking: canvas.checking; clock: canvas.clock }"_s,
                           size, news)
    {}

    QQuickItem* standby() const { return item("StandbyCard"); }
    QQuickItem* card() const { return standby()->findChild<QQuickItem*>(u"card"_s); }
    QQuickItem* rule() const { return first(standby(), "PixelRectangle"); }
    QQuickItem* statusDot() const { return standby()->findChild<QQuickItem*>(u"statusDot"_s); }
};

/** The lower third, on black, after it has slid in. The canvas's "lit" creates it, "above" is the space above it. */
struct LowerThirdFixture : BroadcastFixture
{
    explicit LowerThirdFixture(const NewsStatus& news, QSize size = {1920, 1080})
        : BroadcastFixture(u"property bool lit: true; property real above: 0; "
                           "Rectangle { anchors.fill: parent; color: 'black' } "
                           "Loader { anchors.fill: parent; anchors.topMargin: canvas.above; active: canvas.lit; "
                           "sourceComponent: LowerThird { clock: canvas.clock; stationLabel: canvas.station.label; "
                           "program: canvas.news.programTitle; note: canvas.news.programNote; "
                           "tagline: canvas.news.tagline; ticker: canvas.news.ticker } }"_s,
                           size, news)
    {
        if (!QTest::qWaitFor([this] { return slideProgress() == 1; }))
            QTest::qFail("the lower third does not appear", __FILE__, __LINE__);
        waitUntilIdle();
    }

    QQuickItem* third() const { return item("LowerThird"); }
    QQuickItem* part(const QString& name) const { return third()->findChild<QQuickItem*>(name); }
    QQuickItem* panel() const { return part(u"panel"_s); }
    double slideProgress() const { return third()->property("slideProgress").toDouble(); }
};

/** The tuner strip; "picked" is a property of the canvas. */
struct TunerStripFixture : BroadcastFixture
{
    explicit TunerStripFixture(const NewsStatus& news, QSize size = {1920, 1080}, qsizetype current = 0)
        : BroadcastFixture(u"property string picked; FocusScreen { anchors.fill: parent; focus: true; "
                           "TunerStrip { width: parent.width; height: implicitHeight; stations: canvas.stations; "
                           "current: canvas.station; clock: canvas.clock; "
                           "onPicked: station => canvas.picked = station.path } }"_s,
                           size, news, current)
    {
        waitUntilIdle();
    }

    QQuickItem* strip() const { return item("TunerStrip"); }
    QList<QQuickItem*> buttons() const { return all(strip(), "TunerButton"); }
};

} // namespace quillmere
