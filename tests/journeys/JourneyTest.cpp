#include "Picture.h"
#include "ProcessFigures.h"
#include "SampleHub.h"
#include "Shop.h"
#include "SimulatedViewer.h"
#include "TestMain.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

/**
 * From the front screen over the shelves to a playing tape, back to the front screen and off. Uses the real program and
 * the sample hub.
 */
class JourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void frontScreenShowsFiguresOfHub();
    void playerLibraryIsNotLoadedOnFrontScreen();
    void frontScreenWithoutBroadcastDrawsNothing();
    void shopDoorOpensShelves();
    void arrowsMoveFocusOverShelves();
    void heldArrowMovesFocusToEndOfShelf();
    void chosenMarketShowsItsTapes();
    void shopAtRestDrawsNothing();
    void selectedCardOpensItsTape();
    void backReturnsToSameCard();
    void tapePlays();
    void backReturnsToSameButton();
    void backReturnsFromTapeToFrontScreen();
    void secondBackOnFrontScreenQuits();
    void onlyResumeFileIsWritten();
    void shopShowsTryAgainWithoutHub();
    void tryAgainShowsShelvesWhenHubReturns();

private:
    QImage pictureAtRest();
    bool becomesEqualTo(const QImage& picture);
    std::optional<int> recordedSeconds();
    int stock(int market = -1);

    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<SimulatedViewer> m_viewer;
    QImage m_cardBefore;
    QImage m_buttonBefore;
};

/** The picture once it no longer changes. */
QImage JourneyTest::pictureAtRest()
{
    m_viewer->screen().waitUntilStill(400ms, 5s);
    return m_viewer->screen().grab();
}

/** Waits until the picture equals `picture` again, apart from differences in edge blending. */
bool JourneyTest::becomesEqualTo(const QImage& picture)
{
    constexpr int blending = 4; // of 255, in any colour channel
    // Share of the pixels that may differ more: where large letters touch, a partial repaint blends them differently.
    constexpr double toleratedShare = 1e-5;
    const bool same = m_viewer->screen().waitUntil(
        [&](const QImage& now) {
            return picture::difference(now, picture, area::everything, blending) < toleratedShare;
        },
        10s);
    if (!same) {
        const QImage seen = m_viewer->screen().grab();
        qWarning() << "The picture is another one in" << picture::whereDifferent(seen, picture, blending);
        picture.save(u"journey-expected.png"_s);
        seen.save(u"journey-seen.png"_s);
    }
    return same;
}

std::optional<int> JourneyTest::recordedSeconds()
{
    return picture::recordedSeconds(m_viewer->screen().grab());
}

/** The number of tapes in the hub's market with index `market`; in all markets if it is -1. */
int JourneyTest::stock(int market)
{
    const QJsonObject shop = m_hub->fetch(u"/api/tv/status"_s).value(u"rewindery"_s).toObject();
    return market < 0 ? shop[u"tapes"_s].toInt() : shop[u"markets"_s].toArray()[market][u"tapes"].toInt();
}

void JourneyTest::initTestCase()
{
    m_hub = std::make_unique<SampleHub>();
    m_viewer = std::make_unique<SimulatedViewer>();
    m_viewer->switchOn();
}

void JourneyTest::frontScreenShowsFiguresOfHub()
{
    QVERIFY(m_viewer->waitForText(area::rightDoor, u"every one plays right here"_s));
    static const QRegularExpression figures(u"(\\d+)\\s*tapes in stock\\D*(\\d+)\\s*market"_s);
    const QRegularExpressionMatch seen = figures.match(m_viewer->read(area::rightDoor).simplified());
    const QJsonObject shop = m_hub->fetch(u"/api/tv/status"_s).value(u"rewindery"_s).toObject();
    QVERIFY(stock() >= 240);
    QCOMPARE(seen.captured(1).toInt(), stock());
    QCOMPARE(seen.captured(2).toInt(), int(shop.value(u"markets"_s).toArray().size()));
}

void JourneyTest::playerLibraryIsNotLoadedOnFrontScreen()
{
    QVERIFY(figures::maps(m_viewer->program().process().pid(), u"libQt6Quick"_s));
    QVERIFY(!figures::maps(m_viewer->program().process().pid(), u"libmpv"_s));
}

void JourneyTest::frontScreenWithoutBroadcastDrawsNothing()
{
    QVERIFY(m_viewer->screen().waitUntilStill(500ms, 5s));
    QCOMPARE(m_viewer->screen().count(2s).drawings, 0);
}

void JourneyTest::shopDoorOpensShelves()
{
    QVERIFY(shop::open(*m_viewer));
    QVERIFY(m_viewer->waitForText(shop::header, u"%1 tapes in stock"_s.arg(stock())));
}

void JourneyTest::arrowsMoveFocusOverShelves()
{
    const QImage top = pictureAtRest();
    QList<QImage> shelves;
    for (int shelf = 0; shelf < 4; ++shelf) {
        QVERIFY(m_viewer->pressAndWaitForChange(u"down"_s));
        QVERIFY(m_viewer->pressAndWaitForChange(u"right"_s));
        shelves.append(pictureAtRest());
    }
    for (int shelf = 0; shelf < 4; ++shelf)
        QVERIFY(m_viewer->pressAndWaitForChange(u"up"_s));
    QVERIFY(becomesEqualTo(top));
    // Each shelf keeps its current card.
    for (const QImage& shelf : shelves) {
        m_viewer->press(u"down"_s);
        QVERIFY(becomesEqualTo(shelf));
    }
    for (int shelf = 0; shelf < 4; ++shelf)
        m_viewer->press(u"up"_s);
    QVERIFY(becomesEqualTo(top));
}

void JourneyTest::heldArrowMovesFocusToEndOfShelf()
{
    const QImage top = pictureAtRest();
    m_viewer->press(u"down"_s);
    m_viewer->press(u"left"_s);
    const QImage first = pictureAtRest();
    m_viewer->remote().keyDown(u"right"_s);
    QVERIFY(m_viewer->screen().waitUntilStill(1s, 20s));
    m_viewer->remote().keyUp(u"right"_s);
    const QImage last = pictureAtRest();
    QVERIFY(picture::difference(first, last, area::everything) > 0.05);
    m_viewer->press(u"right"_s);
    QVERIFY(becomesEqualTo(last));
    m_viewer->remote().keyDown(u"left"_s);
    QVERIFY(becomesEqualTo(first));
    m_viewer->remote().keyUp(u"left"_s);
    m_viewer->press(u"up"_s);
    QVERIFY(becomesEqualTo(top));
}

void JourneyTest::chosenMarketShowsItsTapes()
{
    for (const char16_t* button : {u"right", u"right", u"select"})
        m_viewer->press(QString::fromUtf16(button));
    QVERIFY(m_viewer->waitForText(shop::header, u"%1 tapes in stock"_s.arg(stock(0))));
    for (const char16_t* button : {u"left", u"select"})
        m_viewer->press(QString::fromUtf16(button));
    QVERIFY(m_viewer->waitForText(shop::header, u"%1 tapes in stock"_s.arg(stock())));
}

void JourneyTest::shopAtRestDrawsNothing()
{
    m_viewer->press(u"down"_s);
    m_viewer->press(u"down"_s);
    m_cardBefore = pictureAtRest();
    QCOMPARE(m_viewer->screen().count(2s).drawings, 0);
}

void JourneyTest::selectedCardOpensItsTape()
{
    m_viewer->press(u"select"_s);
    QVERIFY(m_viewer->waitForText(shop::detailFacts, u"self-hosted"_s));
    // The library is loaded as soon as the tape's screen opens, so that the play button need not wait for it.
    QTRY_VERIFY(figures::maps(m_viewer->program().process().pid(), u"libmpv"_s));
}

void JourneyTest::backReturnsToSameCard()
{
    m_viewer->press(u"back"_s);
    QVERIFY(becomesEqualTo(m_cardBefore));
}

void JourneyTest::tapePlays()
{
    m_viewer->press(u"select"_s);
    QVERIFY(m_viewer->waitForText(shop::detailFacts, u"self-hosted"_s));
    m_buttonBefore = pictureAtRest();
    m_viewer->press(u"select"_s);
    QVERIFY(m_viewer->screen().waitUntil(
        [](const QImage& picture) { return picture::recordedSeconds(picture).value_or(0) >= 1; }, 15s));
    QVERIFY(figures::maps(m_viewer->program().process().pid(), u"libmpv"_s));

    // The recording shows its position in the picture: four seconds of it must take about four seconds.
    const int start = *recordedSeconds();
    QElapsedTimer time;
    time.start();
    QVERIFY(m_viewer->screen().waitUntil(
        [&](const QImage& picture) { return picture::recordedSeconds(picture).value_or(0) >= start + 4; }, 10s));
    QVERIFY2(time.elapsed() > 2800 && time.elapsed() < 6000, qPrintable(QString::number(time.elapsed())));
}

void JourneyTest::backReturnsToSameButton()
{
    m_viewer->press(u"back"_s);
    QVERIFY(becomesEqualTo(m_buttonBefore));
}

void JourneyTest::backReturnsFromTapeToFrontScreen()
{
    m_viewer->press(u"back"_s);
    QVERIFY(becomesEqualTo(m_cardBefore));
    m_viewer->press(u"back"_s);
    QVERIFY(m_viewer->waitForText(area::rightDoor, u"every one plays right here"_s));
}

void JourneyTest::secondBackOnFrontScreenQuits()
{
    m_viewer->press(u"back"_s);
    QVERIFY(m_viewer->waitForText(area::notice, u"back again"_s, 2s));
    QVERIFY(m_viewer->program().process().isRunning());
    m_viewer->press(u"back"_s);
    QCOMPARE(m_viewer->program().process().waitForEnd(5s), std::optional(0));
}

void JourneyTest::onlyResumeFileIsWritten()
{
    for (const QString& file : m_viewer->program().writtenFiles())
        QVERIFY2(file.endsWith(u"/resume.ini"_s), qPrintable(file));
}

void JourneyTest::shopShowsTryAgainWithoutHub()
{
    m_hub.reset();
    m_viewer->switchOn();
    QVERIFY(m_viewer->screen().waitUntilStill(1s, 10s));
    QVERIFY(m_viewer->pressAndWaitForChange(u"right"_s));
    m_viewer->press(u"select"_s);
    // Inside the button's plate. When a larger area is recognised, the dark letters are sometimes missed.
    constexpr QRectF tryAgain(866, 600, 188, 54);
    QVERIFY(m_viewer->waitForText(tryAgain, u"Try again"_s));
}

void JourneyTest::tryAgainShowsShelvesWhenHubReturns()
{
    m_hub = std::make_unique<SampleHub>();
    m_viewer->press(u"select"_s);
    QVERIFY(m_viewer->waitForText(shop::header, u"%1 tapes in stock"_s.arg(stock())));
    QVERIFY(m_viewer->pressAndWaitForChange(u"down"_s));
    m_viewer->press(u"back"_s);
    QVERIFY(m_viewer->waitForText(area::rightDoor, u"every one plays right here"_s));
}

QUILLMERE_TEST(JourneyTest, QCoreApplication)

} // namespace quillmere

#include "JourneyTest.moc"
