#include "LivingRoom.h"
#include "Picture.h"
#include "ProcessFigures.h"
#include "SampleHub.h"
#include "Shop.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/** From the front screen along the shelves to a playing tape and back out of the door: the real program, the real hub. */
class JourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theFrontScreenShowsTheHubsFigures();
    void theFrontScreenDoesNotLoadThePlayer();
    void aDarkFrontScreenDrawsNothing();
    void theShopDoorOpensTheShelves();
    void theShelvesAreWalkedUpAndDownAndAlong();
    void aHeldButtonWalksToTheEndOfAShelf();
    void anotherMarketHasItsOwnTapes();
    void aShopAtRestDrawsNothing();
    void aChosenCardOpensItsTape();
    void backReturnsToTheSameCard();
    void theTapePlays();
    void backReturnsToTheSameButton();
    void backLeadsFromTheTapeToTheDoors();
    void backTwiceSwitchesTheSetOff();
    void nothingButResumePositionsIsKept();
    void withoutTheHubTheShopSaysSo();
    void tryAgainFillsTheShelves();

private:
    QImage rest();
    bool comesBackTo(const QImage& picture);
    std::optional<int> recordedSeconds();
    int stock(int market = -1);

    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<LivingRoom> m_room;
    QImage m_cardBefore;
    QImage m_buttonBefore;
};

/** The picture once nothing moves. */
QImage JourneyTest::rest()
{
    m_room->screen().waitUntilSettled(400ms, 5s);
    return m_room->screen().look();
}

/** Whether the picture becomes that one again, to the pixel but for how its edges were blended. */
bool JourneyTest::comesBackTo(const QImage& picture)
{
    constexpr int blending = 4; // of 255
    constexpr double drawnInParts =
        1e-5; // of the pixels: where large letters meet, when only a part of them is redrawn
    const bool same = m_room->screen().waitUntil(
        [&](const QImage& now) { return picture::difference(now, picture, area::everything, blending) < drawnInParts; },
        10s);
    if (!same) {
        const QImage seen = m_room->screen().look();
        qWarning() << "The picture is another one in" << picture::whereDifferent(seen, picture, blending);
        picture.save(u"journey-expected.png"_s);
        seen.save(u"journey-seen.png"_s);
    }
    return same;
}

std::optional<int> JourneyTest::recordedSeconds()
{
    return picture::recordedSeconds(m_room->screen().look());
}

/** The tapes of the hub's n-th market, or of all. */
int JourneyTest::stock(int market)
{
    const QJsonObject shop = m_hub->fetch(u"/api/tv/status"_s).value(u"rewindery"_s).toObject();
    return market < 0 ? shop[u"tapes"_s].toInt() : shop[u"markets"_s].toArray()[market][u"tapes"].toInt();
}

void JourneyTest::initTestCase()
{
    m_hub = std::make_unique<SampleHub>();
    m_room = std::make_unique<LivingRoom>();
    m_room->switchOn();
}

void JourneyTest::theFrontScreenShowsTheHubsFigures()
{
    QVERIFY(m_room->waitForText(area::rightDoor, u"every one plays right here"_s));
    static const QRegularExpression figures(u"(\\d+)\\s*tapes in stock\\D*(\\d+)\\s*market"_s);
    const QRegularExpressionMatch seen = figures.match(m_room->read(area::rightDoor).simplified());
    const QJsonObject shop = m_hub->fetch(u"/api/tv/status"_s).value(u"rewindery"_s).toObject();
    QVERIFY(stock() >= 240);
    QCOMPARE(seen.captured(1).toInt(), stock());
    QCOMPARE(seen.captured(2).toInt(), int(shop.value(u"markets"_s).toArray().size()));
}

void JourneyTest::theFrontScreenDoesNotLoadThePlayer()
{
    QVERIFY(figures::maps(m_room->set().process().pid(), u"libQt6Quick"_s));
    QVERIFY(!figures::maps(m_room->set().process().pid(), u"libmpv"_s));
}

void JourneyTest::aDarkFrontScreenDrawsNothing()
{
    QVERIFY(m_room->screen().waitUntilSettled(500ms, 5s));
    QCOMPARE(m_room->screen().count(2s).drawings, 0);
}

void JourneyTest::theShopDoorOpensTheShelves()
{
    QVERIFY(shop::open(*m_room));
    QVERIFY(m_room->waitForText(shop::header, u"%1 tapes in stock"_s.arg(stock())));
}

void JourneyTest::theShelvesAreWalkedUpAndDownAndAlong()
{
    const QImage top = rest();
    QList<QImage> shelves;
    for (int shelf = 0; shelf < 4; ++shelf) {
        QVERIFY(m_room->pressAndSee(u"down"_s));
        QVERIFY(m_room->pressAndSee(u"right"_s));
        shelves.append(rest());
    }
    for (int shelf = 0; shelf < 4; ++shelf)
        QVERIFY(m_room->pressAndSee(u"up"_s));
    QVERIFY(comesBackTo(top));
    // Each shelf remembers its card.
    for (const QImage& shelf : shelves) {
        m_room->press(u"down"_s);
        QVERIFY(comesBackTo(shelf));
    }
    for (int shelf = 0; shelf < 4; ++shelf)
        m_room->press(u"up"_s);
    QVERIFY(comesBackTo(top));
}

void JourneyTest::aHeldButtonWalksToTheEndOfAShelf()
{
    const QImage top = rest();
    m_room->press(u"down"_s);
    m_room->press(u"left"_s);
    const QImage first = rest();
    m_room->remote().pushDown(u"right"_s);
    QVERIFY(m_room->screen().waitUntilSettled(1s, 20s));
    m_room->remote().letGo(u"right"_s);
    const QImage last = rest();
    QVERIFY(picture::difference(first, last, area::everything) > 0.05);
    m_room->press(u"right"_s);
    QVERIFY(comesBackTo(last));
    m_room->remote().pushDown(u"left"_s);
    QVERIFY(comesBackTo(first));
    m_room->remote().letGo(u"left"_s);
    m_room->press(u"up"_s);
    QVERIFY(comesBackTo(top));
}

void JourneyTest::anotherMarketHasItsOwnTapes()
{
    for (const char16_t* button : {u"right", u"right", u"select"})
        m_room->press(QString::fromUtf16(button));
    QVERIFY(m_room->waitForText(shop::header, u"%1 tapes in stock"_s.arg(stock(0))));
    for (const char16_t* button : {u"left", u"select"})
        m_room->press(QString::fromUtf16(button));
    QVERIFY(m_room->waitForText(shop::header, u"%1 tapes in stock"_s.arg(stock())));
}

void JourneyTest::aShopAtRestDrawsNothing()
{
    m_room->press(u"down"_s);
    m_room->press(u"down"_s);
    m_cardBefore = rest();
    QCOMPARE(m_room->screen().count(2s).drawings, 0);
}

void JourneyTest::aChosenCardOpensItsTape()
{
    m_room->press(u"select"_s);
    QVERIFY(m_room->waitForText(shop::detailFacts, u"self-hosted"_s));
    // So that its button need not wait for it.
    QTRY_VERIFY(figures::maps(m_room->set().process().pid(), u"libmpv"_s));
}

void JourneyTest::backReturnsToTheSameCard()
{
    m_room->press(u"back"_s);
    QVERIFY(comesBackTo(m_cardBefore));
}

void JourneyTest::theTapePlays()
{
    m_room->press(u"select"_s);
    QVERIFY(m_room->waitForText(shop::detailFacts, u"self-hosted"_s));
    m_buttonBefore = rest();
    m_room->press(u"select"_s);
    QVERIFY(m_room->screen().waitUntil(
        [](const QImage& picture) { return picture::recordedSeconds(picture).value_or(0) >= 1; }, 15s));
    QVERIFY(figures::maps(m_room->set().process().pid(), u"libmpv"_s));

    // The recording writes its position in the picture: four seconds of it must take about four seconds.
    const int start = *recordedSeconds();
    QElapsedTimer time;
    time.start();
    QVERIFY(m_room->screen().waitUntil(
        [&](const QImage& picture) { return picture::recordedSeconds(picture).value_or(0) >= start + 4; }, 10s));
    QVERIFY2(time.elapsed() > 2800 && time.elapsed() < 6000, qPrintable(QString::number(time.elapsed())));
}

void JourneyTest::backReturnsToTheSameButton()
{
    m_room->press(u"back"_s);
    QVERIFY(comesBackTo(m_buttonBefore));
}

void JourneyTest::backLeadsFromTheTapeToTheDoors()
{
    m_room->press(u"back"_s);
    QVERIFY(comesBackTo(m_cardBefore));
    m_room->press(u"back"_s);
    QVERIFY(m_room->waitForText(area::rightDoor, u"every one plays right here"_s));
}

void JourneyTest::backTwiceSwitchesTheSetOff()
{
    m_room->press(u"back"_s);
    QVERIFY(m_room->waitForText(area::notice, u"back again"_s, 2s));
    QVERIFY(m_room->set().process().isRunning());
    m_room->press(u"back"_s);
    QCOMPARE(m_room->set().process().waitForEnd(5s), std::optional(0));
}

void JourneyTest::nothingButResumePositionsIsKept()
{
    for (const QString& file : m_room->set().writtenFiles())
        QVERIFY2(file.endsWith(u"/resume.ini"_s), qPrintable(file));
}

void JourneyTest::withoutTheHubTheShopSaysSo()
{
    m_hub.reset();
    m_room->switchOn();
    QVERIFY(m_room->screen().waitUntilSettled(1s, 10s));
    QVERIFY(m_room->pressAndSee(u"right"_s));
    m_room->press(u"select"_s);
    // Within the button's plate: read with the whole screen around it, its dark letters are sometimes missed.
    constexpr QRectF tryAgain(866, 600, 188, 54);
    QVERIFY(m_room->waitForText(tryAgain, u"Try again"_s));
}

void JourneyTest::tryAgainFillsTheShelves()
{
    m_hub = std::make_unique<SampleHub>();
    m_room->press(u"select"_s);
    QVERIFY(m_room->waitForText(shop::header, u"%1 tapes in stock"_s.arg(stock())));
    QVERIFY(m_room->pressAndSee(u"down"_s));
    m_room->press(u"back"_s);
    QVERIFY(m_room->waitForText(area::rightDoor, u"every one plays right here"_s));
}

QTEST_GUILESS_MAIN(JourneyTest)
#include "JourneyTest.moc"
