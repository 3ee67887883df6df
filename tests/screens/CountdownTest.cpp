#include "BroadcastFixture.h"
#include "StationPalette.h"
#include "TestMain.h"
#include "Typography.h"

#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

namespace {

const QString nothing = u"no broadcast scheduled"_s;
const QString soon = u"2025-01-01T12:00:05Z"_s; // the clock starts at noon

NewsStatus newsOf(const QString& nextBroadcast, const QString& label)
{
    NewsStatus news;
    news.nextBroadcast = nextBroadcast;
    news.nextBroadcastLabel = label;
    return news;
}

struct Scene : BroadcastFixture
{
    explicit Scene(const QString& nextBroadcast, const QString& label = u"Tonight at five"_s,
                   const QString& width = u"implicitWidth"_s)
        : BroadcastFixture(u"property bool shown: true; property int detailLines: 2; Item { visible: canvas.shown; "
                           u"Countdown { x: 100; y: 100; width: "
                           "%1; detailLines: canvas.detailLines; nextBroadcast: canvas.news.nextBroadcast; label: "
                           "canvas.news.nextBroadcastLabel; "
                           "clock: canvas.clock } }"_s.arg(width),
                           {1920, 1080}, newsOf(nextBroadcast, label))
    {}

    QList<QQuickItem*> rows() const { return TestScreen::texts(item("Countdown")); }

    QStringList words() const { return TestScreen::words(item("Countdown")); }
};

} // namespace

/** The countdown on screen: texts, positions, and frames drawn. */
class CountdownTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void remainingTimeIsAboveLabel();
    void pastBroadcastIsShownAsLastOnSchedule();
    void countdownHasOneRowWithoutBroadcast();
    void rowsAreCentredTenPointsApart();
    void countdownIsDrawnOncePerSecond();
    void hiddenCountdownStopsItsTimer();
    void longLabelIsWrappedAndElided();
};

void CountdownTest::remainingTimeIsAboveLabel()
{
    const Scene scene(u"2025-01-02T13:01:01Z"_s);
    const QString time = u"1d 01:01:01"_s;
    const QString label = u"Tonight at five"_s;
    QCOMPARE(scene.words(), (QStringList{time, label}));
    QCOMPARE(scene.fontOf(time), Typography::monospaced(64, QFont::Bold, 0));
    QCOMPARE(scene.colorOf(time).rgba(), StationPalette::brick().rgba());
    QCOMPARE(scene.fontOf(label), Typography::standard(24));
    QCOMPARE(scene.colorOf(label).rgba(), StationPalette::faded(StationPalette::parchment(), 0.7).rgba());
}

void CountdownTest::pastBroadcastIsShownAsLastOnSchedule()
{
    const Scene scene(u"2025-01-01T12:00:00Z"_s);
    const QString last = u"last on the schedule · Tonight at five"_s;
    QCOMPARE(scene.words(), (QStringList{nothing, last}));
    QCOMPARE(scene.fontOf(nothing), Typography::standard(28));
    QCOMPARE(scene.colorOf(nothing).rgba(), StationPalette::faded(StationPalette::parchment(), 0.65).rgba());
    QCOMPARE(scene.fontOf(last), Typography::standard(22));
    QCOMPARE(scene.colorOf(last).rgba(), StationPalette::faded(StationPalette::parchment(), 0.4).rgba());
}

void CountdownTest::countdownHasOneRowWithoutBroadcast()
{
    const Scene scene(u"2025-06-03 17:00"_s);
    QCOMPARE(scene.words(), QStringList{nothing});
    QCOMPARE(scene.item("Countdown")->height(), scene.text(nothing)->height());
    QCOMPARE(scene.item("Countdown")->width(), scene.text(nothing)->implicitWidth());
}

void CountdownTest::rowsAreCentredTenPointsApart()
{
    const Scene scene(soon);
    const auto rows = scene.rows();
    QCOMPARE(rows.size(), 2);
    const QRectF whole = scene.areaOnCanvas(scene.item("Countdown"));
    QCOMPARE(scene.areaOnCanvas(rows.at(1)).top() - scene.areaOnCanvas(rows.at(0)).bottom(), 10.0);
    QCOMPARE(whole.bottom(), scene.areaOnCanvas(rows.at(1)).bottom());
    for (const QQuickItem* row : rows) {
        QCOMPARE(row->property("horizontalAlignment").toInt(), int(Qt::AlignHCenter));
        QCOMPARE(scene.areaOnCanvas(row).center().x(), whole.center().x());
    }
    // The remaining time is the wider row, and the countdown is as wide as that row.
    QCOMPARE(whole.width(), rows.at(0)->implicitWidth());
}

void CountdownTest::countdownIsDrawnOncePerSecond()
{
    Scene scene(soon);
    scene.waitUntilIdle();
    int frames = scene.frames();
    for (const QString& time : {u"00:00:04"_s, u"00:00:03"_s, u"00:00:02"_s}) {
        scene.clock.advance(999ms);
        scene.waitUntilIdle();
        QCOMPARE(scene.frames(), frames);
        scene.clock.advance(1ms);
        QCOMPARE(scene.words().constFirst(), time);
        scene.waitUntilIdle();
        QCOMPARE(scene.frames(), ++frames);
    }
}

void CountdownTest::hiddenCountdownStopsItsTimer()
{
    Scene scene(soon);
    QCOMPARE(scene.clock.pendingTimers(), 1);
    scene.canvas->setProperty("shown", false);
    QCOMPARE(scene.clock.pendingTimers(), 0);
    scene.clock.advance(2s);
    scene.canvas->setProperty("shown", true);
    QCOMPARE(scene.clock.pendingTimers(), 1);
    QCOMPARE(scene.words().constFirst(), u"00:00:03"_s);
}

void CountdownTest::longLabelIsWrappedAndElided()
{
    const Scene scene(soon, u"a meeting of the council "_s.repeated(10'000), u"1320"_s);
    const QQuickItem* label = scene.rows().at(1);
    QCOMPARE(label->property("lineCount").toInt(), 2);
    QVERIFY(label->property("truncated").toBool());
    QCOMPARE(label->width(), 1320.0);
    QVERIFY(label->property("contentWidth").toReal() <= 1320);
}

QUILLMERE_TEST(CountdownTest, QGuiApplication)

} // namespace quillmere

#include "CountdownTest.moc"
