#include "TickerCrawl.h"
#include "BroadcastFixture.h"
#include "BroadcastTexts.h"
#include "DrawnArea.h"
#include "TestMain.h"

#include <QPainter>

#include <cmath>

namespace quillmere {

namespace {

const QStringList lines{u"The council meets tonight"_s, u"Harbour dredging resumes"_s, u"Library hours"_s};

NewsStatus newsOfLines()
{
    NewsStatus news;
    news.ticker = lines;
    return news;
}

QString longLine()
{
    QString text;
    while (text.size() < 20'000)
        text += u"Item on the agenda. "_s;
    return text.first(20'000);
}

/** A ticker along the bottom of a canvas. The clock starts at the start of a crawl period of 24 s. */
struct Scene : BroadcastFixture
{
    explicit Scene(QSize size = {1920, 1080}, const QString& qml = {})
        : BroadcastFixture(
              u"property bool shown: true; %1 Item { anchors.fill: parent; visible: canvas.shown; "
              "TickerCrawl { y: 1000; width: 1920; lines: canvas.news.ticker; clock: canvas.clock } }"_s.arg(qml),
              size, newsOfLines())
    {}

    TickerCrawl* ticker = static_cast<TickerCrawl*>(item("TickerCrawl"));

    void show(bool shown) { canvas->setProperty("shown", shown); }
    void waitForLine()
    {
        QTRY_VERIFY(ticker->isUpToDate());
        waitUntilIdle();
    }

    /** The expected picture of the window when the line's left edge is at x = `offset`, in points. */
    QImage expected(double offset)
    {
        const QSize size = window().size();
        const double scale = size.width() / 1920.0;
        const TickerPicture picture = TickerRenderer{tickerText(ticker->lines(), {}), 1920, scale}.paint();
        QImage expectedPicture(size, QImage::Format_RGB32);
        expectedPicture.fill(Qt::black);
        QPainter painter(&expectedPicture);
        const double ascent = QFontMetricsF(TickerRenderer::font()).ascent();
        int left = int(std::floor(offset * scale + 0.5));
        for (const QImage& tile : picture.tiles) {
            painter.drawImage(left, int(std::floor((1000 + ascent) * scale + 0.5)) - picture.baseline, tile);
            left += tile.width();
        }
        return expectedPicture;
    }

    QImage grabNow() { return window().grabWindow().convertToFormat(QImage::Format_RGB32); }
};

} // namespace

/** The ticker, with a scripted clock. */
class TickerCrawlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positionFollowsFromClock_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("milliseconds");
        QTest::addColumn<double>("offset");
        const QList<std::pair<const char*, QSize>> sizes{
            {"720p", {1280, 720}}, {"1080p", {1920, 1080}}, {"1440p", {2560, 1440}}, {"2160p", {3840, 2160}}};
        for (const auto& [name, size] : sizes) {
            QTest::addRow("%s, at the right edge", name) << size << 0 << 1920.0;
            QTest::addRow("%s, sliding in", name) << size << 6000 << 960.0;
            QTest::addRow("%s, at the left edge", name) << size << 12'000 << 0.0;
            QTest::addRow("%s, between two pixels", name) << size << 15'003 << -480.48;
            QTest::addRow("%s, almost gone", name) << size << 23'990 << -1918.4;
            QTest::addRow("%s, in the next period", name) << size << 30'000 << 960.0;
        }
    }

    void positionFollowsFromClock()
    {
        QFETCH(QSize, size);
        QFETCH(int, milliseconds);
        QFETCH(double, offset);
        Scene scene(size);
        scene.clock.advance(std::chrono::milliseconds(milliseconds));
        scene.waitForLine();
        QCOMPARE(scene.grabNow(), scene.expected(offset));
    }

    void positionFollowsClockJumps()
    {
        Scene scene;
        scene.waitForLine();
        const QDateTime start = scene.clock.now();
        for (const qint64 seconds : {90LL, -3600LL * 24 * 365 * 30 - 6}) {
            const QDateTime now = start.addSecs(seconds);
            scene.clock.jumpTo(now);
            const QImage expected = scene.expected(tickerOffset(1920, 24, now));
            QTRY_COMPARE(scene.grabNow(), expected);
        }
    }

    void positionIsUpdatedInEveryFrame()
    {
        Scene scene;
        scene.waitForLine();
        for (int step = 1; step <= 30; ++step) {
            const int frames = scene.frames();
            scene.clock.advance(20ms);
            QTRY_VERIFY(scene.frames() > frames);
        }
        QCOMPARE(scene.grabNow(), scene.expected(1920 - 0.6 * 160));
    }

    void noFrameIsDrawnWithoutMovement()
    {
        Scene scene;
        scene.waitForLine();
        const int frames = scene.frames();
        QTest::qWait(300);
        QVERIFY(scene.ticker->isCrawling());
        QCOMPARE(scene.frames(), frames);
        // Equal lines are not painted again.
        QStringList same;
        for (const QString& line : lines)
            same.append(QString(line.constData(), line.size()));
        scene.ticker->setLines(same);
        QVERIFY(scene.ticker->isUpToDate());
        QTest::qWait(100);
        QCOMPARE(scene.frames(), frames);
    }

    void veryLongLineIsDrawnOnlyWhenItMovesByOnePixel()
    {
        Scene scene;
        scene.ticker->setLines({longLine()});
        scene.waitForLine();
        const int before = scene.frames();
        // The line needs half an hour for two display widths, so it moves by one pixel every half second.
        for (int step = 0; step < 100; ++step) {
            scene.clock.advance(50ms);
            QTest::qWait(20);
        }
        const int frames = scene.frames() - before;
        QVERIFY2(frames > 0 && frames <= 12, qPrintable(QString::number(frames)));
        const QImage expected = scene.expected(tickerOffset(1920, tickerPeriod(20'000), scene.clock.now()));
        QTRY_COMPARE(scene.grabNow(), expected);
    }

    void hiddenTickerRequestsNoFrameAndIsAtPositionOfClockWhenShown()
    {
        Scene scene;
        scene.waitForLine();
        scene.show(false);
        scene.waitUntilIdle();
        QVERIFY(!scene.ticker->isCrawling());
        const int frames = scene.frames();
        scene.clock.advance(12s);
        QTest::qWait(200);
        QCOMPARE(scene.frames(), frames);
        scene.show(true);
        QVERIFY(scene.ticker->isCrawling());
        QCOMPARE(scene.grabNow(), scene.expected(0));
    }

    void coveredTickerRequestsNoFrame()
    {
        Scene scene({1920, 1080}, u"Component { id: other; FocusScreen { Rectangle { anchors.fill: parent } } } "
                                  "FullScreenCover { anchors.fill: parent; z: 1 } "
                                  "property alias other: other; "_s);
        scene.waitForLine();
        QVERIFY(scene.ticker->isCrawling());
        auto* const cover = scene.item("FullScreenCover");
        cover->setProperty("beneath", QVariant::fromValue(scene.ticker->parentItem()));
        cover->setProperty("screen", scene.canvas->property("other"));
        QTRY_VERIFY(!scene.ticker->isCrawling());
        cover->setProperty("screen", QVariant::fromValue<QQmlComponent*>(nullptr));
        QTRY_VERIFY(scene.ticker->isCrawling());
    }

    void tickerWithoutWindowStops()
    {
        Scene scene;
        scene.waitForLine();
        QQuickItem* parent = scene.ticker->parentItem();
        scene.ticker->setParentItem(nullptr);
        QVERIFY(!scene.ticker->isCrawling());
        scene.clock.advance(6s);
        scene.ticker->setParentItem(parent);
        QVERIFY(scene.ticker->isCrawling());
        scene.waitForLine();
        QCOMPARE(scene.grabNow(), scene.expected(960));
    }

    void oldLineIsShownUntilNewOneIsPainted()
    {
        Scene scene;
        scene.waitForLine();
        scene.clock.advance(12s);
        const QImage old = scene.expected(0);
        QTRY_COMPARE(scene.grabNow(), old);
        scene.ticker->setLines({u"Something else altogether"_s});
        QVERIFY(!scene.ticker->isUpToDate());
        QCOMPARE(scene.grabNow(), old);
        scene.ticker->setLines({u"And once more"_s});
        scene.waitForLine();
        QCOMPARE(scene.grabNow(), scene.expected(0));
        QVERIFY(scene.grabNow() != old);
    }

    void linesSetWhileHiddenRequestNoFrameAndAreShownLater()
    {
        Scene scene;
        scene.waitForLine();
        scene.show(false);
        scene.waitUntilIdle();
        const int frames = scene.frames();
        scene.clock.advance(12s);
        scene.ticker->setLines({u"News"_s});
        QTest::qWait(200);
        QCOMPARE(scene.frames(), frames);
        scene.show(true);
        scene.waitForLine();
        QCOMPARE(scene.grabNow(), scene.expected(0));
    }

    void lineIsPaintedAgainWhenWindowIsResized()
    {
        Scene scene;
        scene.clock.advance(12s);
        scene.waitForLine();
        scene.window().resize(1280, 720);
        QTRY_COMPARE(scene.window().contentItem()->size(), QSizeF(1280, 720));
        const QImage expected = scene.expected(0);
        QTRY_COMPARE(scene.grabNow(), expected);
    }

    void defaultTextIsShownWithoutLines()
    {
        Scene scene;
        scene.ticker->setLines({});
        scene.waitForLine();
        QVERIFY(scene.ticker->text().startsWith(u"THIS IS THE 5 O'CLOCK NEWS · QUILLMERE TELEVISION · "_s));
        scene.clock.advance(12s);
        scene.waitForFrame();
        QVERIFY(scene.grabNow() != scene.expected(1920));
    }

    void tickerCanBeDestroyedDuringPainting()
    {
        Scene scene;
        for (int round = 0; round < 20; ++round) {
            auto* ticker = new TickerCrawl(scene.canvas);
            ticker->setWidth(1920);
            ticker->setProperty("clock", QVariant::fromValue<Clock*>(&scene.clock));
            ticker->setLines({longLine() + QString::number(round)});
            QTest::qWait(round);
            delete ticker;
        }
        QTest::qWait(50);
    }

    void tickerRepaintsOnlyItself()
    {
        Scene scene({1920, 1080}, u"Rectangle { anchors.fill: parent; color: 'navy' } "_s);
        scene.clock.advance(12s);
        scene.waitForLine();
        scene.waitForFrame();
        DrawnArea drawn(XConnection::open());
        const int frames = scene.frames();
        scene.clock.advance(1s);
        QTRY_VERIFY(scene.frames() > frames);
        QRect area;
        QTRY_VERIFY(!(area |= drawn.take()).isEmpty());
        const QRectF strip = TestScreen::area(scene.ticker);
        QVERIFY2(strip.marginsAdded({2, 2, 2, 2}).contains(area),
                 qPrintable(u"%1 x %2 pixels"_s.arg(area.width()).arg(area.height())));
    }

    void tickerHasHeightOfOneLine()
    {
        const TickerCrawl ticker;
        QCOMPARE(ticker.implicitHeight(), QFontMetricsF(TickerRenderer::font()).height());
        QVERIFY(ticker.implicitHeight() > 28 && ticker.implicitHeight() < 42);
    }

    void accessibleTextContainsLinesUpToLimit()
    {
        TickerCrawl ticker;
        ticker.setLines({u"One"_s, u"Two"_s});
        QCOMPARE(ticker.text(), u"One   ·   Two"_s);
        ticker.setLines({longLine()});
        QVERIFY(ticker.text().size() < 2000);
    }
};

QUILLMERE_TEST(TickerCrawlTest, QGuiApplication)

} // namespace quillmere

#include "TickerCrawlTest.moc"
