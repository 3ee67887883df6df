#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QTest>

#include <cmath>

using namespace std::chrono_literals;

namespace quillmere {

/** Tests the periodic time observer, which measures play time. */
class TimeObserverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positionIsReportedEveryTenSecondsOfPlayTime();
    void remainderCountsTowardsNextReport();
    void nothingIsReportedBeforeFirstPicture();
    void startAtTwentyMinutesNeverReportsZero();
    void timeWithoutPlaybackIsNotReported();
    void jumpIsReportedAtOnce_data();
    void jumpIsReportedAtOnce();
    void seekIsReportedAtLandingPosition();
    void smallStepsBackCountAsPlayTime();
    void reconnectionReportsNothing();
    void streamRestartedBeforeBreakIsNotReportedUntilPastBreak();
    void streamStartedBeforeTargetIsNotReportedUntilPastTarget();
    void pictureAtUnknownPositionIsAtTarget();
    void anotherItemStartsCountAgain();
    void destroyedObserverIsNotCalled();
    void observersMayBeDestroyedInReport();
    void observerMayOutlivePlayer();
    void longerIntervalReportsLessOften();

private:
    std::unique_ptr<TimeObserver> observe(StreamPlayerFixture& fixture, std::chrono::seconds interval = 10s)
    {
        m_reports.clear();
        return fixture.player->addPeriodicTimeObserver(interval, [this](double seconds) { m_reports << seconds; });
    }
    static void play(StreamPlayerFixture& fixture, double from, double to)
    {
        const int halves = int((to - from) * 2);
        for (int half = 0; half <= halves; ++half)
            fixture.moveTo(from + half / 2.0);
    }

    QList<double> m_reports;
};

void TimeObserverTest::positionIsReportedEveryTenSecondsOfPlayTime()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(0);
    play(fixture, 0, 9.5);
    QCOMPARE(m_reports, QList<double>{});
    play(fixture, 10, 45);
    QCOMPARE(m_reports, QList<double>({10, 20, 30, 40}));
}

void TimeObserverTest::remainderCountsTowardsNextReport()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(0);
    for (int step = 1; step <= 54; ++step)
        fixture.moveTo(step * 0.75);
    QCOMPARE(m_reports, QList<double>({10.5, 20.25, 30, 40.5}));
}

void TimeObserverTest::nothingIsReportedBeforeFirstPicture()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.setItem();
    fixture.player->seek(60, SeekTolerance::AtOrAfter);
    fixture.start();
    for (const double at : {0.0, 30.0, 60.0})
        fixture.moveTo(at);
    QCOMPARE(m_reports, QList<double>{});
}

void TimeObserverTest::startAtTwentyMinutesNeverReportsZero()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(1200);
    play(fixture, 1200, 1225);
    QCOMPARE(m_reports, QList<double>({1210, 1220}));
}

void TimeObserverTest::timeWithoutPlaybackIsNotReported()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(60);
    fixture.player->pause();
    fixture.clock.advance(1h);
    fixture.moveTo(60);
    fixture.player->setItem(nullptr);
    QCOMPARE(m_reports, QList<double>{});
}

void TimeObserverTest::jumpIsReportedAtOnce_data()
{
    QTest::addColumn<double>("to");
    QTest::addColumn<bool>("reported");
    QTest::newRow("10 seconds forward") << 70.0 << true;
    QTest::newRow("further") << 77.0 << true;
    QTest::newRow("less far forward") << 69.0 << false;
    QTest::newRow("10 seconds back") << 50.0 << true;
    QTest::newRow("less far back") << 51.0 << false;
}

void TimeObserverTest::jumpIsReportedAtOnce()
{
    QFETCH(const double, to);
    QFETCH(const bool, reported);
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(60);
    fixture.player->seek(to, SeekTolerance::AtOrAfter);
    fixture.finishSeek(to);
    QCOMPARE(m_reports, reported ? QList<double>{to} : QList<double>{});
    m_reports.clear();
    if (reported) {
        play(fixture, to, to + 9.5);
        QCOMPARE(m_reports, QList<double>{});
    }
}

void TimeObserverTest::seekIsReportedAtLandingPosition()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(0);
    fixture.player->seek(90, SeekTolerance::AtOrAfter);
    fixture.moveTo(15); // a position from before the seek
    QCOMPARE(m_reports, QList<double>{});
    fixture.finishSeek(90.4);
    QCOMPARE(m_reports, QList<double>{90.4});
}

void TimeObserverTest::smallStepsBackCountAsPlayTime()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(60);
    for (int step = 0; step < 6; ++step) {
        fixture.moveTo(60.9);
        fixture.moveTo(60);
    }
    QCOMPARE(m_reports, QList<double>{60});
}

void TimeObserverTest::reconnectionReportsNothing()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(60);
    fixture.moveTo(65);
    fixture.endFile();
    fixture.clock.advance(1s);
    fixture.moveTo(0);
    fixture.showPicture(65.5);
    QCOMPARE(m_reports, QList<double>{});
    fixture.moveTo(70);
    QCOMPARE(m_reports, QList<double>{70});
}

void TimeObserverTest::streamRestartedBeforeBreakIsNotReportedUntilPastBreak()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(60);
    fixture.moveTo(65);
    fixture.endFile();
    fixture.clock.advance(1s);
    fixture.showPicture(0);
    QCOMPARE(fixture.player->position(), 0.0);
    play(fixture, 0, 30);
    fixture.endFile();
    fixture.clock.advance(2s);
    fixture.showPicture(0);
    play(fixture, 0, 69.5);
    QCOMPARE(m_reports, QList<double>{});
    play(fixture, 70, 80);
    QCOMPARE(m_reports, QList<double>({70, 80}));
}

void TimeObserverTest::streamStartedBeforeTargetIsNotReportedUntilPastTarget()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.setItem();
    fixture.player->seek(60, SeekTolerance::AtOrAfter);
    fixture.player->play();
    fixture.start();
    fixture.showPicture(0);
    play(fixture, 0, 69.5);
    QCOMPARE(m_reports, QList<double>{});
    play(fixture, 70, 75);
    QCOMPARE(m_reports, QList<double>{70});
}

void TimeObserverTest::pictureAtUnknownPositionIsAtTarget()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(60);
    fixture.moveTo(65);
    fixture.endFile();
    fixture.clock.advance(1s);
    fixture.showPicture(std::nan(""));
    QCOMPARE(fixture.player->position(), 65.0);
    fixture.player->seek(90, SeekTolerance::AtOrAfter);
    fixture.finishSeek(std::nan(""));
    QCOMPARE(fixture.player->position(), 90.0);
    play(fixture, 90, 99.5);
    QCOMPARE(m_reports, QList<double>{90});
    QCOMPARE(fixture.player->position(), 99.5);
}

void TimeObserverTest::anotherItemStartsCountAgain()
{
    StreamPlayerFixture fixture;
    const auto observer = observe(fixture);
    fixture.playFrom(60);
    fixture.moveTo(69);
    fixture.playFrom(0);
    fixture.moveTo(9);
    QCOMPARE(m_reports, QList<double>{});
    fixture.moveTo(10);
    QCOMPARE(m_reports, QList<double>{10});
}

void TimeObserverTest::destroyedObserverIsNotCalled()
{
    StreamPlayerFixture fixture;
    auto observer = observe(fixture);
    fixture.playFrom(60);
    observer.reset();
    fixture.moveTo(80);
    QCOMPARE(m_reports, QList<double>{});
}

void TimeObserverTest::observersMayBeDestroyedInReport()
{
    StreamPlayerFixture fixture;
    std::unique_ptr<TimeObserver> first;
    std::unique_ptr<TimeObserver> second;
    QList<double> reports;
    first = fixture.player->addPeriodicTimeObserver(10s, [&](double seconds) {
        reports << seconds;
        first.reset();
        second.reset();
    });
    second = observe(fixture);
    fixture.playFrom(60);
    play(fixture, 60, 80);
    QCOMPARE(reports, QList<double>{70});
    QCOMPARE(m_reports, QList<double>{});
}

void TimeObserverTest::observerMayOutlivePlayer()
{
    StreamPlayerFixture fixture;
    auto observer = observe(fixture);
    fixture.playFrom(60);
    fixture.player.reset();
    observer.reset();
    QCOMPARE(m_reports, QList<double>{});
}

void TimeObserverTest::longerIntervalReportsLessOften()
{
    StreamPlayerFixture fixture;
    QList<double> often;
    const auto seldom = observe(fixture, 30s);
    const auto other = fixture.player->addPeriodicTimeObserver(1s, [&](double seconds) { often << seconds; });
    fixture.playFrom(0);
    play(fixture, 0, 60);
    QCOMPARE(m_reports, QList<double>({30, 60}));
    QCOMPARE(often.size(), 60);
}

QUILLMERE_TEST(TimeObserverTest, QCoreApplication)

} // namespace quillmere

#include "TimeObserverTest.moc"
