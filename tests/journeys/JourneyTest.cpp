#include "LivingRoom.h"
#include "Picture.h"
#include "ProcessFigures.h"
#include "SampleHub.h"
#include "ShopList.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/** From the front screen to a playing tape and back out of the door: the real program, the real sample hub. */
class JourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theFrontScreenShowsTheHubsFigures();
    void theFrontScreenDoesNotLoadThePlayer();
    void aDarkFrontScreenDrawsNothing();
    void theShopDoorOpensTheList();
    void aSelectedTapePlays();
    void backReturnsToTheSameRow();
    void backTwiceSwitchesTheSetOff();
    void nothingButResumePositionsIsKept();

private:
    std::optional<int> recordedSeconds();

    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<LivingRoom> m_room;
    QImage m_listBefore;
};

std::optional<int> JourneyTest::recordedSeconds()
{
    return picture::recordedSeconds(m_room->screen().look());
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
    QVERIFY(shop.value(u"tapes"_s).toInt() >= 240);
    QCOMPARE(seen.captured(1).toInt(), shop.value(u"tapes"_s).toInt());
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

void JourneyTest::theShopDoorOpensTheList()
{
    QVERIFY(shoplist::open(*m_room));
    for (int i = 0; i < 3; ++i) {
        m_room->screen().waitUntilSettled(200ms, 2s);
        QVERIFY(m_room->pressAndSee(u"down"_s));
    }
    QVERIFY(m_room->screen().waitUntilSettled(300ms, 3s));
    m_listBefore = m_room->screen().look();
}

void JourneyTest::aSelectedTapePlays()
{
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

void JourneyTest::backReturnsToTheSameRow()
{
    m_room->press(u"back"_s);
    QVERIFY(m_room->screen().waitUntil(
        [this](const QImage& picture) { return picture::difference(picture, m_listBefore, area::everything) == 0; },
        5s));
}

void JourneyTest::backTwiceSwitchesTheSetOff()
{
    m_room->press(u"back"_s);
    QVERIFY(m_room->waitForText(area::rightDoor, u"every one plays right here"_s));
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

QTEST_GUILESS_MAIN(JourneyTest)
#include "JourneyTest.moc"
