#include "TickerCrawl.h"
#include "BroadcastTexts.h"
#include "DrawnArea.h"
#include "ScriptedClock.h"
#include "Stage.h"

#include <QPainter>
#include <QTest>
#include <QTimeZone>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QDateTime start(QDate(2025, 1, 1), QTime(12, 0), QTimeZone::utc()); // at which a round of 24 seconds begins

const QStringList lines{u"The council meets tonight"_s, u"Harbour dredging resumes"_s, u"Library hours"_s};

QString longLine()
{
    QString text;
    while (text.size() < 20'000)
        text += u"Item on the agenda. "_s;
    return text.first(20'000);
}

/** A ticker along the bottom of a canvas, by a clock that stands still. */
struct Newsroom
{
    ScriptedClock clock{start};
    Timepiece timepiece{clock};
    Stage stage;
    QQuickItem* root = nullptr;
    TickerCrawl* ticker = nullptr;

    explicit Newsroom(QSize size = {1920, 1080}, const QString& qml = {}) : stage(size)
    {
        root = stage.put(u"import Quillmere.News\nCanvas { id: canvas; property QtObject timepiece; "
                         "property var lines; property bool sight: true; %1 Item { anchors.fill: parent; "
                         "visible: canvas.sight; TickerCrawl { objectName: 'ticker'; y: 1000; width: 1920; "
                         "lines: canvas.lines; timepiece: canvas.timepiece } } }"_s.arg(qml),
                         {{u"timepiece"_s, QVariant::fromValue<QObject*>(&timepiece)}, {u"lines"_s, lines}});
        ticker = root->findChild<TickerCrawl*>(u"ticker"_s);
    }

    void waitForLine()
    {
        QTRY_VERIFY(ticker->isUpToDate());
        stage.settle();
    }

    /** What the glass should show when the line's left edge is `offset` points right of its place. */
    QImage expected(double offset)
    {
        const QSize size = stage.window().size();
        const double scale = size.width() / 1920.0;
        const TickerPicture picture = TickerPrint{tickerText(ticker->lines(), {}), 1920, scale}.paint();
        QImage glass(size, QImage::Format_RGB32);
        glass.fill(Qt::black);
        QPainter painter(&glass);
        const double ascent = QFontMetricsF(TickerPrint::font()).ascent();
        int left = int(std::floor(offset * scale + 0.5));
        for (const QImage& tile : picture.tiles) {
            painter.drawImage(left, int(std::floor((1000 + ascent) * scale + 0.5)) - picture.baseline, tile);
            left += tile.width();
        }
        return glass;
    }

    QImage glance() { return stage.window().grabWindow().convertToFormat(QImage::Format_RGB32); }
};

} // namespace

/** The ticker on the glass, by a clock that the test moves. */
class TickerCrawlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLineStandsWhereTheClockSays_data();
    void theLineStandsWhereTheClockSays();
    void aClockThatJumpsTakesTheLineAlong();
    void itFollowsTheClockAtEveryFrame();
    void withoutAMoveThereIsNoFrame();
    void aVeryLongLineIsDrawnOnlyWhenItMovesByAPixel();
    void outOfSightItAsksForNoFrame();
    void coveredItAsksForNoFrame();
    void inSightAgainItStandsWhereTheClockSays();
    void withoutAWindowItRests();
    void newLinesTakeTheOldOnesPlace();
    void theSameLinesAreNotPaintedAgain();
    void linesThatComeOutOfSightAreSeenAtOnceWhenItIsBack();
    void anotherSizeOfTheWindowIsPaintedAnew();
    void withoutLinesItShowsTheStationsOwn();
    void itMayGoWhileItsLineIsPainted();
    void whatIsDrawnForItIsItsStrip();
    void itIsAsTallAsALine();
    void whomCannotSeeItHearsItsText();
};

void TickerCrawlTest::theLineStandsWhereTheClockSays_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<double>("offset");
    const QList<std::pair<const char*, QSize>> sizes{
        {"720p", {1280, 720}}, {"1080p", {1920, 1080}}, {"1440p", {2560, 1440}}, {"2160p", {3840, 2160}}};
    for (const auto& [name, size] : sizes) {
        QTest::addRow("%s, at the right edge", name) << size << 0 << 1920.0;
        QTest::addRow("%s, coming in", name) << size << 6000 << 960.0;
        QTest::addRow("%s, at rest", name) << size << 12'000 << 0.0;
        QTest::addRow("%s, between two pixels", name) << size << 15'003 << -480.48;
        QTest::addRow("%s, nearly out", name) << size << 23'990 << -1918.4;
        QTest::addRow("%s, in the next round", name) << size << 30'000 << 960.0;
    }
}

void TickerCrawlTest::theLineStandsWhereTheClockSays()
{
    QFETCH(QSize, size);
    QFETCH(int, milliseconds);
    QFETCH(double, offset);
    Newsroom room(size);
    room.clock.advance(std::chrono::milliseconds(milliseconds));
    room.waitForLine();
    QCOMPARE(room.glance(), room.expected(offset));
}

void TickerCrawlTest::aClockThatJumpsTakesTheLineAlong()
{
    Newsroom room;
    room.waitForLine();
    for (const qint64 seconds : {90LL, -3600LL * 24 * 365 * 30 - 6}) {
        const QDateTime now = start.addSecs(seconds);
        room.clock.jumpTo(now);
        const QImage expected = room.expected(tickerOffset(1920, 24, now));
        QTRY_COMPARE(room.glance(), expected);
    }
}

void TickerCrawlTest::itFollowsTheClockAtEveryFrame()
{
    Newsroom room;
    room.waitForLine();
    for (int step = 1; step <= 30; ++step) {
        const int frames = room.stage.frames();
        room.clock.advance(20ms);
        QTRY_VERIFY(room.stage.frames() > frames);
    }
    QCOMPARE(room.glance(), room.expected(1920 - 0.6 * 160));
}

void TickerCrawlTest::withoutAMoveThereIsNoFrame()
{
    Newsroom room;
    room.waitForLine();
    const int frames = room.stage.frames();
    QTest::qWait(300);
    QVERIFY(room.ticker->isCrawling());
    QCOMPARE(room.stage.frames(), frames);
}

void TickerCrawlTest::aVeryLongLineIsDrawnOnlyWhenItMovesByAPixel()
{
    Newsroom room;
    room.ticker->setLines({longLine()});
    room.waitForLine();
    const int before = room.stage.frames();
    // It takes half an hour for two widths, so a pixel takes half a second.
    for (int step = 0; step < 100; ++step) {
        room.clock.advance(50ms);
        QTest::qWait(20);
    }
    const int frames = room.stage.frames() - before;
    QVERIFY2(frames > 0 && frames <= 12, qPrintable(QString::number(frames)));
    const QImage expected = room.expected(tickerOffset(1920, tickerPeriod(20'000), room.clock.now()));
    QTRY_COMPARE(room.glance(), expected);
}

void TickerCrawlTest::outOfSightItAsksForNoFrame()
{
    Newsroom room;
    room.waitForLine();
    room.root->setProperty("sight", false);
    room.stage.settle();
    QVERIFY(!room.ticker->isCrawling());
    const int frames = room.stage.frames();
    room.clock.advance(10s);
    room.ticker->setLines({u"Another"_s});
    QTest::qWait(200);
    QCOMPARE(room.stage.frames(), frames);
}

void TickerCrawlTest::coveredItAsksForNoFrame()
{
    Newsroom room({1920, 1080}, u"Component { id: other; FocusScreen { Rectangle { anchors.fill: parent } } } "
                                "FullScreenCover { anchors.fill: parent; z: 1 } "
                                "property alias other: other; "_s);
    room.waitForLine();
    QVERIFY(room.ticker->isCrawling());
    auto* cover = Stage::first(room.root, "FullScreenCover");
    QVERIFY(cover);
    cover->setProperty("beneath", QVariant::fromValue(room.ticker->parentItem()));
    cover->setProperty("screen", room.root->property("other"));
    QTRY_VERIFY(!room.ticker->isCrawling());
    cover->setProperty("screen", QVariant::fromValue<QQmlComponent*>(nullptr));
    QTRY_VERIFY(room.ticker->isCrawling());
}

void TickerCrawlTest::inSightAgainItStandsWhereTheClockSays()
{
    Newsroom room;
    room.waitForLine();
    room.root->setProperty("sight", false);
    room.stage.settle();
    room.clock.advance(12s);
    room.root->setProperty("sight", true);
    QVERIFY(room.ticker->isCrawling());
    QCOMPARE(room.glance(), room.expected(0));
}

void TickerCrawlTest::withoutAWindowItRests()
{
    Newsroom room;
    room.waitForLine();
    QQuickItem* place = room.ticker->parentItem();
    room.ticker->setParentItem(nullptr);
    QVERIFY(!room.ticker->isCrawling());
    room.clock.advance(6s);
    room.ticker->setParentItem(place);
    QVERIFY(room.ticker->isCrawling());
    room.waitForLine();
    QCOMPARE(room.glance(), room.expected(960));
}

void TickerCrawlTest::newLinesTakeTheOldOnesPlace()
{
    Newsroom room;
    room.waitForLine();
    room.clock.advance(12s);
    const QImage old = room.expected(0);
    QTRY_COMPARE(room.glance(), old);
    room.ticker->setLines({u"Something else altogether"_s});
    QVERIFY(!room.ticker->isUpToDate());
    QCOMPARE(room.glance(), old);
    room.ticker->setLines({u"And once more"_s});
    room.waitForLine();
    QCOMPARE(room.glance(), room.expected(0));
    QVERIFY(room.glance() != old);
}

void TickerCrawlTest::theSameLinesAreNotPaintedAgain()
{
    Newsroom room;
    room.waitForLine();
    const int frames = room.stage.frames();
    QStringList same;
    for (const QString& line : lines)
        same.append(QString(line.constData(), line.size()));
    room.ticker->setLines(same);
    QVERIFY(room.ticker->isUpToDate());
    QTest::qWait(100);
    QCOMPARE(room.stage.frames(), frames);
}

void TickerCrawlTest::linesThatComeOutOfSightAreSeenAtOnceWhenItIsBack()
{
    Newsroom room;
    room.waitForLine();
    room.root->setProperty("sight", false);
    room.clock.advance(12s);
    room.ticker->setLines({u"News"_s});
    room.root->setProperty("sight", true);
    room.waitForLine();
    QCOMPARE(room.glance(), room.expected(0));
}

void TickerCrawlTest::anotherSizeOfTheWindowIsPaintedAnew()
{
    Newsroom room;
    room.clock.advance(12s);
    room.waitForLine();
    room.stage.window().resize(1280, 720);
    QTRY_COMPARE(room.stage.window().contentItem()->size(), QSizeF(1280, 720));
    const QImage expected = room.expected(0);
    QTRY_COMPARE(room.glance(), expected);
}

void TickerCrawlTest::withoutLinesItShowsTheStationsOwn()
{
    Newsroom room;
    room.ticker->setLines({});
    room.waitForLine();
    QVERIFY(room.ticker->text().startsWith(u"THIS IS THE 5 O'CLOCK NEWS · QUILLMERE TELEVISION · "_s));
    room.clock.advance(12s);
    room.stage.waitForFrame();
    QVERIFY(room.glance() != room.expected(1920));
}

void TickerCrawlTest::itMayGoWhileItsLineIsPainted()
{
    Newsroom room;
    for (int round = 0; round < 20; ++round) {
        auto* ticker = new TickerCrawl(room.root);
        ticker->setWidth(1920);
        ticker->setTimepiece(&room.timepiece);
        ticker->setLines({longLine() + QString::number(round)});
        QTest::qWait(round);
        delete ticker;
    }
    QTest::qWait(50);
}

void TickerCrawlTest::whatIsDrawnForItIsItsStrip()
{
    Newsroom room({1920, 1080}, u"Rectangle { anchors.fill: parent; color: 'navy' } "_s);
    room.clock.advance(12s);
    room.waitForLine();
    room.stage.waitForFrame();
    DrawnArea drawn(XConnection::open());
    const int frames = room.stage.frames();
    room.clock.advance(1s);
    QTRY_VERIFY(room.stage.frames() > frames);
    QRect area;
    QTRY_VERIFY(!(area |= drawn.take()).isEmpty());
    const QRectF strip = Stage::area(room.ticker);
    QVERIFY2(strip.marginsAdded({2, 2, 2, 2}).contains(area),
             qPrintable(u"%1 x %2 pixels"_s.arg(area.width()).arg(area.height())));
}

void TickerCrawlTest::itIsAsTallAsALine()
{
    const TickerCrawl ticker;
    QCOMPARE(ticker.implicitHeight(), QFontMetricsF(TickerPrint::font()).height());
    QVERIFY(ticker.implicitHeight() > 28 && ticker.implicitHeight() < 42);
}

void TickerCrawlTest::whomCannotSeeItHearsItsText()
{
    TickerCrawl ticker;
    ticker.setLines({u"One"_s, u"Two"_s});
    QCOMPARE(ticker.text(), u"One   ·   Two"_s);
    ticker.setLines({longLine()});
    QVERIFY(ticker.text().size() < 2000);
}

QTEST_MAIN(TickerCrawlTest)
#include "TickerCrawlTest.moc"
