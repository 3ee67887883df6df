#include "Picture.h"
#include "ProcessFigures.h"
#include "SampleHub.h"
#include "SimulatedViewer.h"
#include "TestMain.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QRegularExpression>
#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr QRectF card(430, 240, 1060, 580);
constexpr QRectF remaining(760, 650, 400, 90); // on the card, with the sample hub's texts
constexpr QRectF ticker(0, 1040, 1920, 40);
constexpr QRectF lowerThird(70, 780, 1200, 276);
constexpr QRectF firstPlate(200, 20, 280, 52); // on the tuner strip, inside the plate
constexpr QRectF secondPlate(530, 20, 160, 52);
constexpr QPointF onTheBars(320, 300); // beside the card, on the yellow bar
const QColor yellow(192, 192, 0);
const QColor onAirRed(217, 43, 43);
const QColor parchment(236, 224, 196);

constexpr int longestLoop = 64; // seconds; no channel's recording is longer
const QString watching = u"THIS SET IS WATCHING THE TOWER"_s;
const QString program = u"The Five O'Clock Record"_s;

bool isCard(const QImage& picture)
{
    return picture::isLike(picture::colourAt(picture, onTheBars), yellow, 16);
}

/**
 * Second 0 is as black as an empty picture. The colour bars' lowest band could be read as a number too, but as a
 * greater one than any channel's recording reaches.
 */
bool isChannel(const QImage& picture)
{
    const int second = picture::recordedSeconds(picture).value_or(0);
    return second > 0 && second < longestLoop;
}

bool hasLowerThird(const QImage& picture)
{
    return picture::shareOf(picture, lowerThird, onAirRed, 24) > 0.004;
}

bool isMarked(const QImage& picture, const QRectF& plate)
{
    return picture::shareOf(picture, plate, onAirRed, 24) > 0.004;
}

/** How far the ticker has moved to the left between two pictures, in points; nullopt if it cannot be determined. */
std::optional<int> distanceMoved(const QImage& before, const QImage& after)
{
    constexpr int farthest = 400;
    constexpr QRectF darkArea(1000, 1046, 500, 30); // an area in which only the ticker's letters are bright
    constexpr double letters = 0.05;
    constexpr double same = 0.02;
    const QImage line = after.copy(picture::pixels(after.size(), darkArea));
    if (picture::shareOf(line, area::everything, parchment, 48) < letters)
        return std::nullopt;
    for (int moved = 1; moved <= farthest; ++moved) {
        const QImage then = before.copy(picture::pixels(before.size(), darkArea.translated(moved, 0)));
        if (picture::difference(then, line, area::everything, 48) < same)
            return moved;
    }
    return std::nullopt;
}

/** The number of threads that decode, play sound or draw while a stream plays. */
qsizetype playerThreads(qint64 pid)
{
    return figures::threads(pid).filter(QRegularExpression(u"^(mpv/|video-)"_s)).size();
}

} // namespace

/**
 * The news channel: off air, on air, off air again, another station, and dismissal. Uses the real program and the
 * sample hub.
 */
class NewsJourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void standbyCardIsShownWhenNothingIsOnAir();
    void countdownRuns();
    void tickerMoves();
    void startedBroadcastIsShown();
    void lowerThirdStaysForEightSeconds();
    void standbyCardIsShownWhenBroadcastEnds();
    void lowerThirdAppearsAgainWithNextBroadcast();
    void selectedStationIsShown();
    void dismissedChannelEndsPlayer();

private:
    using Clock = ScreenWatch::Clock;

    bool waitForText(const QRectF& area, const QString& text);
    std::optional<int> secondsLeft();
    /** The time at which the condition first becomes true for the picture; nullopt after 30 seconds. */
    std::optional<Clock::time_point> whenSeen(const std::function<bool(const QImage&)>& condition);
    static double secondsBetween(Clock::time_point from, std::optional<Clock::time_point> to);

    QDateTime m_broadcast;
    SampleHub m_hub;
    SimulatedViewer m_viewer;
    std::optional<Clock::time_point> m_lowerThirdShown;
};

bool NewsJourneyTest::waitForText(const QRectF& area, const QString& text)
{
    const bool read = m_viewer.waitForText(area, text, 20s);
    if (!read)
        m_viewer.screen().grab().save(u"news-journey-seen.png"_s);
    return read;
}

std::optional<int> NewsJourneyTest::secondsLeft()
{
    static const QRegularExpression form(u"(\\d\\d):(\\d\\d):(\\d\\d)"_s);
    std::optional<int> seconds;
    m_viewer.screen().waitUntil(
        [&](const QImage& picture) {
            const QRegularExpressionMatch read = form.match(m_viewer.reader().read(picture, remaining));
            if (read.hasMatch())
                seconds = (read.captured(1).toInt() * 60 + read.captured(2).toInt()) * 60 + read.captured(3).toInt();
            return read.hasMatch();
        },
        10s);
    return seconds;
}

std::optional<NewsJourneyTest::Clock::time_point>
NewsJourneyTest::whenSeen(const std::function<bool(const QImage&)>& condition)
{
    if (m_viewer.screen().waitUntil(condition, 30s))
        return Clock::now();
    m_viewer.screen().grab().save(u"news-journey-seen.png"_s);
    return std::nullopt;
}

double NewsJourneyTest::secondsBetween(Clock::time_point from, std::optional<Clock::time_point> to)
{
    return to ? std::chrono::duration<double>(*to - from).count() : 1e9;
}

void NewsJourneyTest::initTestCase()
{
    // Whole seconds, because the status has no fractions.
    m_broadcast = QDateTime::fromSecsSinceEpoch(QDateTime::currentSecsSinceEpoch() + 2 * 3600, QTimeZone::utc());
    // Without channel 3, which is always on air, the first station is the built-in one.
    m_hub.post(u"/status"_s, {{u"news"_s, QJsonObject{{u"channels"_s, QJsonObject{{u"3"_s, QJsonValue::Null}}},
                                                      {u"next_broadcast"_s, m_broadcast.toString(Qt::ISODate)}}}});
    m_viewer.switchOn();
}

void NewsJourneyTest::standbyCardIsShownWhenNothingIsOnAir()
{
    QVERIFY(waitForText(area::rightDoor, u"every one plays right here"_s));
    m_viewer.press(u"select"_s);
    QVERIFY(waitForText(card, watching));
    QVERIFY(waitForText(card, program));
    QVERIFY(isCard(m_viewer.screen().grab()));
}

void NewsJourneyTest::countdownRuns()
{
    for (int reading = 0; reading < 3; ++reading) {
        const auto left = secondsLeft();
        QVERIFY(left);
        const qint64 expected = QDateTime::currentDateTimeUtc().secsTo(m_broadcast);
        // The countdown shows whole seconds and is read a moment later.
        QVERIFY2(*left >= expected && *left <= expected + 5,
                 qPrintable(u"%1 instead of %2"_s.arg(*left).arg(expected)));
        if (reading < 2)
            QTRY_VERIFY_WITH_TIMEOUT(secondsLeft().value_or(*left) < *left, 20'000);
    }
}

void NewsJourneyTest::tickerMoves()
{
    // The ticker moves at a constant speed: two display widths in 24 seconds.
    constexpr double speed = 2 * 1920 / 24.0;
    constexpr int enough = 10;
    QVERIFY(m_viewer.screen().count(2s, picture::pixels(m_viewer.screen().size(), ticker)).pictures >= enough);
    std::optional<int> distance;
    double expected = 0;
    // Between the end of the line and its beginning, nothing can be read for some seconds.
    for (QDeadlineTimer limit(40s); !distance && !limit.hasExpired();) {
        const QImage before = m_viewer.screen().grab();
        const auto then = Clock::now();
        m_viewer.screen().waitUntil([then](const QImage&) { return Clock::now() - then >= 1s; }, 5s);
        const QImage after = m_viewer.screen().grab();
        expected = speed * secondsBetween(then, Clock::now());
        distance = distanceMoved(before, after);
    }
    QVERIFY(distance);
    QVERIFY2(std::abs(*distance - expected) < 0.3 * speed,
             qPrintable(u"%1 points instead of %2"_s.arg(*distance).arg(expected)));
}

void NewsJourneyTest::startedBroadcastIsShown()
{
    const auto started = Clock::now();
    m_hub.startBroadcast();
    const auto seen = whenSeen([](const QImage& picture) { return !isCard(picture); });
    m_lowerThirdShown = whenSeen(&hasLowerThird);
    const auto shown = whenSeen(&isChannel);
    qInfo("broadcast seen after %.1f s, its picture after %.1f s more", secondsBetween(started, seen),
          seen ? secondsBetween(*seen, shown) : 0);
    QVERIFY(seen && m_lowerThirdShown && shown);
    QVERIFY(secondsBetween(started, seen) <
            9); // the pause of 6 seconds between passes, and two requests on a busy machine
    QVERIFY(secondsBetween(*seen, shown) < 8);
}

void NewsJourneyTest::lowerThirdStaysForEightSeconds()
{
    QVERIFY(m_lowerThirdShown);
    QVERIFY(waitForText(lowerThird, u"LIVE"_s));
    QVERIFY(waitForText(lowerThird, program));
    const auto disappeared =
        whenSeen([](const QImage& picture) { return isChannel(picture) && !hasLowerThird(picture); });
    const double stayed = secondsBetween(*m_lowerThirdShown, disappeared);
    qInfo("the lower third stayed for %.1f s", stayed);
    QVERIFY2(stayed > 7 && stayed < 12, qPrintable(QString::number(stayed)));
    // It must not appear again while the broadcast continues.
    const auto second = picture::recordedSeconds(m_viewer.screen().grab());
    QVERIFY(!m_viewer.screen().waitUntil(&hasLowerThird, 7s));
    QVERIFY(whenSeen(&isChannel));
    QVERIFY(picture::recordedSeconds(m_viewer.screen().grab()) != second);
}

void NewsJourneyTest::standbyCardIsShownWhenBroadcastEnds()
{
    const auto stopped = Clock::now();
    m_hub.stopBroadcast();
    const auto seen = whenSeen(&isCard);
    qInfo("standby card seen after %.1f s", secondsBetween(stopped, seen));
    QVERIFY(secondsBetween(stopped, seen) < 9);
    QVERIFY(waitForText(card, watching));
}

void NewsJourneyTest::lowerThirdAppearsAgainWithNextBroadcast()
{
    m_hub.startBroadcast();
    QVERIFY(whenSeen(&hasLowerThird));
    QVERIFY(whenSeen(&isChannel));
    QVERIFY(waitForText(firstPlate, u"5 O'Clock News"_s));
    QVERIFY(isMarked(m_viewer.screen().grab(), firstPlate));
}

void NewsJourneyTest::selectedStationIsShown()
{
    m_viewer.press(u"up"_s);
    m_viewer.press(u"right"_s);
    const auto chosen = Clock::now();
    m_viewer.press(u"select"_s);
    QVERIFY(whenSeen([](const QImage& picture) { return isMarked(picture, secondPlate); }));
    const auto shown = whenSeen(&isChannel);
    qInfo("another station's picture after %.1f s", secondsBetween(chosen, shown));
    // The new station is requested immediately.
    QVERIFY(secondsBetween(chosen, shown) < 12);
    QVERIFY(waitForText(lowerThird, u"PARKS"_s));
    QVERIFY(waitForText(secondPlate, u"Parks"_s));
    QVERIFY(!isMarked(m_viewer.screen().grab(), firstPlate));
}

void NewsJourneyTest::dismissedChannelEndsPlayer()
{
    const qint64 set = m_viewer.program().process().pid();
    QVERIFY(playerThreads(set) > 0);
    const auto left = Clock::now();
    m_viewer.press(u"back"_s);
    const auto pictureEnded = whenSeen([](const QImage& picture) { return !isChannel(picture); });
    const auto playerEnded = whenSeen([set](const QImage&) { return playerThreads(set) == 0; });
    qInfo("no picture after %.2f s, no player after %.2f s", secondsBetween(left, pictureEnded),
          secondsBetween(left, playerEnded));
    QVERIFY(secondsBetween(left, pictureEnded) < 2);
    QVERIFY(secondsBetween(left, playerEnded) < 3);
    QVERIFY(waitForText(area::leftDoor, program));
}

QUILLMERE_TEST(NewsJourneyTest, QCoreApplication)

} // namespace quillmere

#include "NewsJourneyTest.moc"
