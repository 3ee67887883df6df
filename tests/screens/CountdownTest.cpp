#include "BroadcastFixture.h"
#include "StationPalette.h"
#include "TestMain.h"
#include "Typography.h"

namespace quillmere {

namespace {

const QString nothing = u"no broadcast scheduled"_s;
const QString soon = u"2025-01-01T12:00:05Z"_s; // the clock starts at noon

struct Scene : BroadcastFixture
{
    explicit Scene(const QString& nextBroadcast, const QString& label = u"Tonight at five"_s,
                   const QString& width = u"implicitWidth"_s)
        : BroadcastFixture(u"property bool shown: true; Item { visible: canvas.shown; Countdown { x: 100; y: 100; "
                           "width: %1; detailLines: 2; nextBroadcast: canvas.news.nextBroadcast; "
                           "label: canvas.news.nextBroadcastLabel; clock: canvas.clock } }"_s.arg(width),
                           {1920, 1080}, programme({}, {}, nextBroadcast, label))
    {}

    QList<QQuickItem*> rows() const { return texts(item("Countdown")); }
    QStringList words() const { return TestScreen::words(item("Countdown")); }
};

} // namespace

/** The countdown on screen: texts, positions, and frames drawn. */
class CountdownTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void remainingTimeIsCentredTenPointsAboveLabel()
    {
        const Scene scene(u"2025-01-02T13:01:01Z"_s);
        const QString time = u"1d 01:01:01"_s;
        const QString label = u"Tonight at five"_s;
        QCOMPARE(scene.words(), (QStringList{time, label}));
        scene.verifyLook(time, Typography::monospaced(64, QFont::Bold, 0), StationPalette::brick());
        scene.verifyLook(label, Typography::standard(24), StationPalette::faded(StationPalette::parchment(), 0.7));

        const QRectF whole = scene.areaOnCanvas(scene.item("Countdown"));
        QCOMPARE(scene.areaOf(label).top() - scene.areaOf(time).bottom(), 10.0);
        QCOMPARE(whole.bottom(), scene.areaOf(label).bottom());
        for (const QQuickItem* row : scene.rows()) {
            QCOMPARE(row->property("horizontalAlignment").toInt(), int(Qt::AlignHCenter));
            QCOMPARE(scene.areaOnCanvas(row).center().x(), whole.center().x());
        }
        // The remaining time is the wider row, and the countdown is as wide as that row.
        QCOMPARE(whole.width(), scene.text(time)->implicitWidth());
    }

    void pastBroadcastIsShownAsLastOnSchedule()
    {
        const Scene scene(u"2025-01-01T12:00:00Z"_s);
        const QString last = u"last on the schedule · Tonight at five"_s;
        const QColor parchment = StationPalette::parchment();
        QCOMPARE(scene.words(), (QStringList{nothing, last}));
        scene.verifyLook(nothing, Typography::standard(28), StationPalette::faded(parchment, 0.65));
        scene.verifyLook(last, Typography::standard(22), StationPalette::faded(parchment, 0.4));
    }

    void countdownHasOneRowWithoutBroadcast()
    {
        const Scene scene(u"2025-06-03 17:00"_s);
        QCOMPARE(scene.words(), QStringList{nothing});
        QCOMPARE(scene.item("Countdown")->height(), scene.text(nothing)->height());
        QCOMPARE(scene.item("Countdown")->width(), scene.text(nothing)->implicitWidth());
    }

    void countdownIsDrawnOncePerSecond()
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

    void hiddenCountdownStopsItsTimer()
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

    void longLabelIsWrappedAndElided()
    {
        const Scene scene(soon, u"a meeting of the council "_s.repeated(10'000), u"1320"_s);
        const QQuickItem* label = scene.rows().at(1);
        QCOMPARE(label->property("lineCount").toInt(), 2);
        QVERIFY(label->property("truncated").toBool());
        QCOMPARE(label->width(), 1320.0);
        QVERIFY(label->property("contentWidth").toReal() <= 1320);
    }
};

QUILLMERE_TEST(CountdownTest, QGuiApplication)

} // namespace quillmere

#include "CountdownTest.moc"
