#include "Rows.h"
#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QTest>

#include <cmath>

using namespace std::chrono_literals;

namespace quillmere {

namespace {

/** A player with an observer of 10 seconds. */
struct ObservedFixture : StreamPlayerFixture
{
    ObservedFixture() = default;
    explicit ObservedFixture(double at) { playFrom(at); }

    void play(double from, double to)
    {
        const int halves = int((to - from) * 2);
        for (int half = 0; half <= halves; ++half)
            moveTo(from + half / 2.0);
    }

    QList<double> reports;
    std::unique_ptr<TimeObserver> observer =
        player->addPeriodicTimeObserver(10s, [this](double seconds) { reports << seconds; });
};

} // namespace

/** Tests the periodic time observer, which measures play time. */
class TimeObserverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positionIsReportedEveryTenSecondsOfPlayTime()
    {
        ObservedFixture fixture(0);
        fixture.play(0, 9.5);
        QCOMPARE(fixture.reports, QList<double>{});
        fixture.play(10, 45);
        QCOMPARE(fixture.reports, QList<double>({10, 20, 30, 40}));
    }

    void remainderCountsTowardsNextReport()
    {
        ObservedFixture fixture(0);
        for (int step = 1; step <= 54; ++step)
            fixture.moveTo(step * 0.75);
        QCOMPARE(fixture.reports, QList<double>({10.5, 20.25, 30, 40.5}));
    }

    void nothingIsReportedBeforeFirstPicture()
    {
        ObservedFixture fixture;
        fixture.setItem();
        fixture.player->seek(60, SeekTolerance::AtOrAfter);
        fixture.start();
        for (const double at : {0.0, 30.0, 60.0})
            fixture.moveTo(at);
        QCOMPARE(fixture.reports, QList<double>{});
    }

    void startAtTwentyMinutesNeverReportsZero()
    {
        ObservedFixture fixture(1200);
        fixture.play(1200, 1225);
        QCOMPARE(fixture.reports, QList<double>({1210, 1220}));
    }

    void timeWithoutPlaybackIsNotReported()
    {
        ObservedFixture fixture(60);
        fixture.player->pause();
        fixture.clock.advance(1h);
        fixture.moveTo(60);
        fixture.player->setItem(nullptr);
        QCOMPARE(fixture.reports, QList<double>{});
    }

    void jumpIsReportedAtOnce_data()
    {
        rows<double, bool>({"to", "reported"}, {{"10 seconds forward", 70, true},
                                                {"further", 77, true},
                                                {"less far forward", 69, false},
                                                {"10 seconds back", 50, true},
                                                {"less far back", 51, false}});
    }
    void jumpIsReportedAtOnce()
    {
        QFETCH(const double, to);
        QFETCH(const bool, reported);
        ObservedFixture fixture(60);
        fixture.player->seek(to, SeekTolerance::AtOrAfter);
        fixture.finishSeek(to);
        QCOMPARE(fixture.reports, reported ? QList<double>{to} : QList<double>{});
        fixture.reports.clear();
        if (reported) {
            fixture.play(to, to + 9.5);
            QCOMPARE(fixture.reports, QList<double>{});
        }
    }

    void seekIsReportedAtLandingPosition()
    {
        ObservedFixture fixture(0);
        fixture.player->seek(90, SeekTolerance::AtOrAfter);
        fixture.moveTo(15); // a position from before the seek
        QCOMPARE(fixture.reports, QList<double>{});
        fixture.finishSeek(90.4);
        QCOMPARE(fixture.reports, QList<double>{90.4});
    }

    void smallStepsBackCountAsPlayTime()
    {
        ObservedFixture fixture(60);
        for (int step = 0; step < 6; ++step) {
            fixture.moveTo(60.9);
            fixture.moveTo(60);
        }
        QCOMPARE(fixture.reports, QList<double>{60});
    }

    void reconnectionReportsNothing()
    {
        ObservedFixture fixture(60);
        fixture.moveTo(65);
        fixture.endFile();
        fixture.clock.advance(1s);
        fixture.moveTo(0);
        fixture.showPicture(65.5);
        QCOMPARE(fixture.reports, QList<double>{});
        fixture.moveTo(70);
        QCOMPARE(fixture.reports, QList<double>{70});
    }

    void streamRestartedBeforeBreakIsNotReportedUntilPastBreak()
    {
        ObservedFixture fixture(60);
        fixture.moveTo(65);
        fixture.endFile();
        fixture.reconnect(1s, 0);
        QCOMPARE(fixture.player->position(), 0.0);
        fixture.play(0, 30);
        fixture.endFile();
        fixture.reconnect(2s, 0);
        fixture.play(0, 69.5);
        QCOMPARE(fixture.reports, QList<double>{});
        fixture.play(70, 80);
        QCOMPARE(fixture.reports, QList<double>({70, 80}));
    }

    void streamStartedBeforeTargetIsNotReportedUntilPastTarget()
    {
        ObservedFixture fixture;
        fixture.setItem();
        fixture.player->seek(60, SeekTolerance::AtOrAfter);
        fixture.player->play();
        fixture.start();
        fixture.showPicture(0);
        fixture.play(0, 69.5);
        QCOMPARE(fixture.reports, QList<double>{});
        fixture.play(70, 75);
        QCOMPARE(fixture.reports, QList<double>{70});
    }

    void pictureAtUnknownPositionIsAtTarget()
    {
        ObservedFixture fixture(60);
        fixture.moveTo(65);
        fixture.endFile();
        fixture.reconnect(1s, std::nan(""));
        QCOMPARE(fixture.player->position(), 65.0);
        fixture.player->seek(90, SeekTolerance::AtOrAfter);
        fixture.finishSeek(std::nan(""));
        QCOMPARE(fixture.player->position(), 90.0);
        fixture.play(90, 99.5);
        QCOMPARE(fixture.reports, QList<double>{90});
        QCOMPARE(fixture.player->position(), 99.5);
    }

    void anotherItemStartsCountAgain()
    {
        ObservedFixture fixture(60);
        fixture.moveTo(69);
        fixture.playFrom(0);
        fixture.moveTo(9);
        QCOMPARE(fixture.reports, QList<double>{});
        fixture.moveTo(10);
        QCOMPARE(fixture.reports, QList<double>{10});
    }

    void destroyedObserverIsNotCalled()
    {
        ObservedFixture fixture(60);
        fixture.observer.reset();
        fixture.moveTo(80);
        QCOMPARE(fixture.reports, QList<double>{});
    }

    void observersMayBeDestroyedInReport()
    {
        ObservedFixture fixture;
        QList<double> reports;
        QList<double> otherReports;
        std::unique_ptr<TimeObserver> other;
        fixture.observer = fixture.player->addPeriodicTimeObserver(10s, [&](double seconds) {
            reports << seconds;
            fixture.observer.reset();
            other.reset();
        });
        other = fixture.player->addPeriodicTimeObserver(10s, [&](double seconds) { otherReports << seconds; });
        fixture.playFrom(60);
        fixture.play(60, 80);
        QCOMPARE(reports, QList<double>{70});
        QCOMPARE(otherReports, QList<double>{});
    }

    void observerMayOutlivePlayer()
    {
        ObservedFixture fixture(60);
        fixture.player.reset();
        fixture.observer.reset();
        QCOMPARE(fixture.reports, QList<double>{});
    }

    void longerIntervalReportsLessOften()
    {
        ObservedFixture fixture;
        int often = 0;
        QList<double> seldom;
        const auto first = fixture.player->addPeriodicTimeObserver(1s, [&](double) { ++often; });
        const auto second = fixture.player->addPeriodicTimeObserver(30s, [&](double at) { seldom << at; });
        fixture.playFrom(0);
        fixture.play(0, 60);
        QCOMPARE(seldom, QList<double>({30, 60}));
        QCOMPARE(often, 60);
    }
};

QUILLMERE_TEST(TimeObserverTest, QCoreApplication)

} // namespace quillmere

#include "TimeObserverTest.moc"
