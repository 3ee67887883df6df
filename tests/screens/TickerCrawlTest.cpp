#include "TickerCrawl.h"
#include "BroadcastTexts.h"
#include "DrawnArea.h"
#include "ScriptedClock.h"
#include "TestMain.h"
#include "TestScreen.h"

#include <QPainter>
#include <QTest>
#include <QTimeZone>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

const QDateTime start(QDate(2025, 1, 1), QTime(12, 0), QTimeZone::utc()); // start of a crawl period of 24 s

const QStringList lines{u"The council meets tonight"_s, u"Harbour dredging resumes"_s, u"Library hours"_s};

QString longLine()
{
    QString text;
    while (text.size() < 20'000)
        text += u"Item on the agenda. "_s;
    return text.first(20'000);
}

/** A ticker along the bottom of a canvas, with a scripted clock. */
struct TickerScene
{
    ScriptedClock clock{start};
    TestScreen fixture;
    QQuickItem* root = nullptr;
    TickerCrawl* ticker = nullptr;

    explicit TickerScene(QSize size = {1920, 1080}, const QString& qml = {}) : fixture(size)
    {
        root = fixture.load(u"import Quillmere.News\nCanvas { id: canvas; property QtObject clock; "
                            "property var lines; property bool shown: true; %1 Item { anchors.fill: parent; "
                            "visible: canvas.shown; TickerCrawl { objectName: 'ticker'; y: 1000; width: 1920; "
                            "lines: canvas.lines; clock: canvas.clock } } }"_s.arg(qml),
                            {{u"clock"_s, QVariant::fromValue<QObject*>(&clock)}, {u"lines"_s, lines}});
        ticker = root->findChild<TickerCrawl*>(u"ticker"_s);
    }

    void waitForLine()
    {
        QTRY_VERIFY(ticker->isUpToDate());
        fixture.waitUntilIdle();
    }

    /** The expected picture of the window when the line's left edge is at x = `offset`, in points. */
    QImage expected(double offset)
    {
        const QSize size = fixture.window().size();
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

    QImage grabNow() { return fixture.window().grabWindow().convertToFormat(QImage::Format_RGB32); }
};

} // namespace

/** The ticker, with a scripted clock. */
class TickerCrawlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positionFollowsFromClock_data();
    void positionFollowsFromClock();
    void positionFollowsClockJumps();
    void positionIsUpdatedInEveryFrame();
    void noFrameIsDrawnWithoutMovement();
    void veryLongLineIsDrawnOnlyWhenItMovesByOnePixel();
    void hiddenTickerRequestsNoFrame();
    void coveredTickerRequestsNoFrame();
    void tickerShownAgainIsAtPositionOfClock();
    void tickerWithoutWindowStops();
    void oldLineIsShownUntilNewOneIsPainted();
    void equalLinesAreNotPaintedAgain();
    void linesSetWhileHiddenAreShownLater();
    void lineIsPaintedAgainWhenWindowIsResized();
    void defaultTextIsShownWithoutLines();
    void tickerCanBeDestroyedDuringPainting();
    void tickerRepaintsOnlyItself();
    void tickerHasHeightOfOneLine();
    void accessibleTextContainsLinesUpToLimit();
};

void TickerCrawlTest::positionFollowsFromClock_data()
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

void TickerCrawlTest::positionFollowsFromClock()
{
    QFETCH(QSize, size);
    QFETCH(int, milliseconds);
    QFETCH(double, offset);
    TickerScene scene(size);
    scene.clock.advance(std::chrono::milliseconds(milliseconds));
    scene.waitForLine();
    QCOMPARE(scene.grabNow(), scene.expected(offset));
}

void TickerCrawlTest::positionFollowsClockJumps()
{
    TickerScene scene;
    scene.waitForLine();
    for (const qint64 seconds : {90LL, -3600LL * 24 * 365 * 30 - 6}) {
        const QDateTime now = start.addSecs(seconds);
        scene.clock.jumpTo(now);
        const QImage expected = scene.expected(tickerOffset(1920, 24, now));
        QTRY_COMPARE(scene.grabNow(), expected);
    }
}

void TickerCrawlTest::positionIsUpdatedInEveryFrame()
{
    TickerScene scene;
    scene.waitForLine();
    for (int step = 1; step <= 30; ++step) {
        const int frames = scene.fixture.frames();
        scene.clock.advance(20ms);
        QTRY_VERIFY(scene.fixture.frames() > frames);
    }
    QCOMPARE(scene.grabNow(), scene.expected(1920 - 0.6 * 160));
}

void TickerCrawlTest::noFrameIsDrawnWithoutMovement()
{
    TickerScene scene;
    scene.waitForLine();
    const int frames = scene.fixture.frames();
    QTest::qWait(300);
    QVERIFY(scene.ticker->isCrawling());
    QCOMPARE(scene.fixture.frames(), frames);
}

void TickerCrawlTest::veryLongLineIsDrawnOnlyWhenItMovesByOnePixel()
{
    TickerScene scene;
    scene.ticker->setLines({longLine()});
    scene.waitForLine();
    const int before = scene.fixture.frames();
    // The line needs half an hour for two display widths, so it moves by one pixel every half second.
    for (int step = 0; step < 100; ++step) {
        scene.clock.advance(50ms);
        QTest::qWait(20);
    }
    const int frames = scene.fixture.frames() - before;
    QVERIFY2(frames > 0 && frames <= 12, qPrintable(QString::number(frames)));
    const QImage expected = scene.expected(tickerOffset(1920, tickerPeriod(20'000), scene.clock.now()));
    QTRY_COMPARE(scene.grabNow(), expected);
}

void TickerCrawlTest::hiddenTickerRequestsNoFrame()
{
    TickerScene scene;
    scene.waitForLine();
    scene.root->setProperty("shown", false);
    scene.fixture.waitUntilIdle();
    QVERIFY(!scene.ticker->isCrawling());
    const int frames = scene.fixture.frames();
    scene.clock.advance(10s);
    scene.ticker->setLines({u"Another"_s});
    QTest::qWait(200);
    QCOMPARE(scene.fixture.frames(), frames);
}

void TickerCrawlTest::coveredTickerRequestsNoFrame()
{
    TickerScene scene({1920, 1080}, u"Component { id: other; FocusScreen { Rectangle { anchors.fill: parent } } } "
                                    "FullScreenCover { anchors.fill: parent; z: 1 } "
                                    "property alias other: other; "_s);
    scene.waitForLine();
    QVERIFY(scene.ticker->isCrawling());
    auto* cover = TestScreen::first(scene.root, "FullScreenCover");
    QVERIFY(cover);
    cover->setProperty("beneath", QVariant::fromValue(scene.ticker->parentItem()));
    cover->setProperty("screen", scene.root->property("other"));
    QTRY_VERIFY(!scene.ticker->isCrawling());
    cover->setProperty("screen", QVariant::fromValue<QQmlComponent*>(nullptr));
    QTRY_VERIFY(scene.ticker->isCrawling());
}

void TickerCrawlTest::tickerShownAgainIsAtPositionOfClock()
{
    TickerScene scene;
    scene.waitForLine();
    scene.root->setProperty("shown", false);
    scene.fixture.waitUntilIdle();
    scene.clock.advance(12s);
    scene.root->setProperty("shown", true);
    QVERIFY(scene.ticker->isCrawling());
    QCOMPARE(scene.grabNow(), scene.expected(0));
}

void TickerCrawlTest::tickerWithoutWindowStops()
{
    TickerScene scene;
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

void TickerCrawlTest::oldLineIsShownUntilNewOneIsPainted()
{
    TickerScene scene;
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

void TickerCrawlTest::equalLinesAreNotPaintedAgain()
{
    TickerScene scene;
    scene.waitForLine();
    const int frames = scene.fixture.frames();
    QStringList same;
    for (const QString& line : lines)
        same.append(QString(line.constData(), line.size()));
    scene.ticker->setLines(same);
    QVERIFY(scene.ticker->isUpToDate());
    QTest::qWait(100);
    QCOMPARE(scene.fixture.frames(), frames);
}

void TickerCrawlTest::linesSetWhileHiddenAreShownLater()
{
    TickerScene scene;
    scene.waitForLine();
    scene.root->setProperty("shown", false);
    scene.clock.advance(12s);
    scene.ticker->setLines({u"News"_s});
    scene.root->setProperty("shown", true);
    scene.waitForLine();
    QCOMPARE(scene.grabNow(), scene.expected(0));
}

void TickerCrawlTest::lineIsPaintedAgainWhenWindowIsResized()
{
    TickerScene scene;
    scene.clock.advance(12s);
    scene.waitForLine();
    scene.fixture.window().resize(1280, 720);
    QTRY_COMPARE(scene.fixture.window().contentItem()->size(), QSizeF(1280, 720));
    const QImage expected = scene.expected(0);
    QTRY_COMPARE(scene.grabNow(), expected);
}

void TickerCrawlTest::defaultTextIsShownWithoutLines()
{
    TickerScene scene;
    scene.ticker->setLines({});
    scene.waitForLine();
    QVERIFY(scene.ticker->text().startsWith(u"THIS IS THE 5 O'CLOCK NEWS · QUILLMERE TELEVISION · "_s));
    scene.clock.advance(12s);
    scene.fixture.waitForFrame();
    QVERIFY(scene.grabNow() != scene.expected(1920));
}

void TickerCrawlTest::tickerCanBeDestroyedDuringPainting()
{
    TickerScene scene;
    for (int round = 0; round < 20; ++round) {
        auto* ticker = new TickerCrawl(scene.root);
        ticker->setWidth(1920);
        ticker->setProperty("clock", QVariant::fromValue<Clock*>(&scene.clock));
        ticker->setLines({longLine() + QString::number(round)});
        QTest::qWait(round);
        delete ticker;
    }
    QTest::qWait(50);
}

void TickerCrawlTest::tickerRepaintsOnlyItself()
{
    TickerScene scene({1920, 1080}, u"Rectangle { anchors.fill: parent; color: 'navy' } "_s);
    scene.clock.advance(12s);
    scene.waitForLine();
    scene.fixture.waitForFrame();
    DrawnArea drawn(XConnection::open());
    const int frames = scene.fixture.frames();
    scene.clock.advance(1s);
    QTRY_VERIFY(scene.fixture.frames() > frames);
    QRect area;
    QTRY_VERIFY(!(area |= drawn.take()).isEmpty());
    const QRectF strip = TestScreen::area(scene.ticker);
    QVERIFY2(strip.marginsAdded({2, 2, 2, 2}).contains(area),
             qPrintable(u"%1 x %2 pixels"_s.arg(area.width()).arg(area.height())));
}

void TickerCrawlTest::tickerHasHeightOfOneLine()
{
    const TickerCrawl ticker;
    QCOMPARE(ticker.implicitHeight(), QFontMetricsF(TickerRenderer::font()).height());
    QVERIFY(ticker.implicitHeight() > 28 && ticker.implicitHeight() < 42);
}

void TickerCrawlTest::accessibleTextContainsLinesUpToLimit()
{
    TickerCrawl ticker;
    ticker.setLines({u"One"_s, u"Two"_s});
    QCOMPARE(ticker.text(), u"One   ·   Two"_s);
    ticker.setLines({longLine()});
    QVERIFY(ticker.text().size() < 2000);
}

QUILLMERE_TEST(TickerCrawlTest, QGuiApplication)

} // namespace quillmere

#include "TickerCrawlTest.moc"
