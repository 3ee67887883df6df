#include "StreamOnScript.h"
#include "TestMain.h"

#include <QTest>

#include <cmath>

using namespace std::chrono_literals;

/** Tests the periodic time observer, which measures play time. */
class TimeObserverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positionIsReportedEveryTenSecondsOfPlayTime();
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
    std::unique_ptr<TimeObserver> observe(StreamOnScript& script, std::chrono::seconds interval = 10s)
    {
        m_reports.clear();
        return script.player->addPeriodicTimeObserver(interval, [this](double seconds) { m_reports << seconds; });
    }
    static void play(StreamOnScript& script, double from, double to)
    {
        const int halves = int((to - from) * 2);
        for (int half = 0; half <= halves; ++half)
            script.moveTo(from + half / 2.0);
    }

    QList<double> m_reports;
};

void TimeObserverTest::positionIsReportedEveryTenSecondsOfPlayTime()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.playFrom(0);
    play(script, 0, 9.5);
    QCOMPARE(m_reports, QList<double>{});
    play(script, 10, 45);
    QCOMPARE(m_reports, QList<double>({10, 20, 30, 40}));
}

void TimeObserverTest::nothingIsReportedBeforeFirstPicture()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.setItem();
    script.player->seek(60, SeekTolerance::AtOrAfter);
    script.start();
    for (const double at : {0.0, 30.0, 60.0})
        script.moveTo(at);
    QCOMPARE(m_reports, QList<double>{});
}

void TimeObserverTest::startAtTwentyMinutesNeverReportsZero()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.playFrom(1200);
    play(script, 1200, 1225);
    QCOMPARE(m_reports, QList<double>({1210, 1220}));
}

void TimeObserverTest::timeWithoutPlaybackIsNotReported()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.playFrom(60);
    script.player->pause();
    script.clock.advance(1h);
    script.moveTo(60);
    script.player->setItem(nullptr);
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
    StreamOnScript script;
    const auto observer = observe(script);
    script.playFrom(60);
    script.player->seek(to, SeekTolerance::AtOrAfter);
    script.finishSeek(to);
    QCOMPARE(m_reports, reported ? QList<double>{to} : QList<double>{});
    m_reports.clear();
    if (reported) {
        play(script, to, to + 9.5);
        QCOMPARE(m_reports, QList<double>{});
    }
}

void TimeObserverTest::seekIsReportedAtLandingPosition()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.playFrom(0);
    script.player->seek(90, SeekTolerance::AtOrAfter);
    script.moveTo(15); // a position from before the seek
    QCOMPARE(m_reports, QList<double>{});
    script.finishSeek(90.4);
    QCOMPARE(m_reports, QList<double>{90.4});
}

void TimeObserverTest::smallStepsBackCountAsPlayTime()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.playFrom(60);
    for (int step = 0; step < 6; ++step) {
        script.moveTo(60.9);
        script.moveTo(60);
    }
    QCOMPARE(m_reports, QList<double>{60});
}

void TimeObserverTest::reconnectionReportsNothing()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.playFrom(60);
    script.moveTo(65);
    script.endFile();
    script.clock.advance(1s);
    script.moveTo(0);
    script.showPicture(65.5);
    QCOMPARE(m_reports, QList<double>{});
    script.moveTo(70);
    QCOMPARE(m_reports, QList<double>{70});
}

void TimeObserverTest::streamRestartedBeforeBreakIsNotReportedUntilPastBreak()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.playFrom(60);
    script.moveTo(65);
    script.endFile();
    script.clock.advance(1s);
    script.showPicture(0);
    QCOMPARE(script.player->position(), 0.0);
    play(script, 0, 30);
    script.endFile();
    script.clock.advance(2s);
    script.showPicture(0);
    play(script, 0, 69.5);
    QCOMPARE(m_reports, QList<double>{});
    play(script, 70, 80);
    QCOMPARE(m_reports, QList<double>({70, 80}));
}

void TimeObserverTest::streamStartedBeforeTargetIsNotReportedUntilPastTarget()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.setItem();
    script.player->seek(60, SeekTolerance::AtOrAfter);
    script.player->play();
    script.start();
    script.showPicture(0);
    play(script, 0, 69.5);
    QCOMPARE(m_reports, QList<double>{});
    play(script, 70, 75);
    QCOMPARE(m_reports, QList<double>{70});
}

void TimeObserverTest::pictureAtUnknownPositionIsAtTarget()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.playFrom(60);
    script.moveTo(65);
    script.endFile();
    script.clock.advance(1s);
    script.showPicture(std::nan(""));
    QCOMPARE(script.player->position(), 65.0);
    script.player->seek(90, SeekTolerance::AtOrAfter);
    script.finishSeek(std::nan(""));
    QCOMPARE(script.player->position(), 90.0);
    play(script, 90, 99.5);
    QCOMPARE(m_reports, QList<double>{90});
    QCOMPARE(script.player->position(), 99.5);
}

void TimeObserverTest::anotherItemStartsCountAgain()
{
    StreamOnScript script;
    const auto observer = observe(script);
    script.playFrom(60);
    script.moveTo(69);
    script.playFrom(0);
    script.moveTo(9);
    QCOMPARE(m_reports, QList<double>{});
    script.moveTo(10);
    QCOMPARE(m_reports, QList<double>{10});
}

void TimeObserverTest::destroyedObserverIsNotCalled()
{
    StreamOnScript script;
    auto observer = observe(script);
    script.playFrom(60);
    observer.reset();
    script.moveTo(80);
    QCOMPARE(m_reports, QList<double>{});
}

void TimeObserverTest::observersMayBeDestroyedInReport()
{
    StreamOnScript script;
    std::unique_ptr<TimeObserver> first;
    std::unique_ptr<TimeObserver> second;
    QList<double> reports;
    first = script.player->addPeriodicTimeObserver(10s, [&](double seconds) {
        reports << seconds;
        first.reset();
        second.reset();
    });
    second = observe(script);
    script.playFrom(60);
    play(script, 60, 80);
    QCOMPARE(reports, QList<double>{70});
    QCOMPARE(m_reports, QList<double>{});
}

void TimeObserverTest::observerMayOutlivePlayer()
{
    StreamOnScript script;
    auto observer = observe(script);
    script.playFrom(60);
    script.player.reset();
    observer.reset();
    QCOMPARE(m_reports, QList<double>{});
}

void TimeObserverTest::longerIntervalReportsLessOften()
{
    StreamOnScript script;
    QList<double> often;
    const auto seldom = observe(script, 30s);
    const auto other = script.player->addPeriodicTimeObserver(1s, [&](double seconds) { often << seconds; });
    script.playFrom(0);
    play(script, 0, 60);
    QCOMPARE(m_reports, QList<double>({30, 60}));
    QCOMPARE(often.size(), 60);
}

QUILLMERE_TEST(TimeObserverTest, QCoreApplication)
#include "TimeObserverTest.moc"
