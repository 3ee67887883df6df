#include "CountdownTimer.h"
#include "Rows.h"
#include "ScriptedClock.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

QDateTime at(int hour, int minute, int second = 0, int millisecond = 0)
{
    return QDateTime(QDate(2025, 6, 3), QTime(hour, minute, second, millisecond), QTimeZone::utc());
}

/** A countdown to 17:00 that starts to tick 10.5 s before, on a scripted clock. */
struct Fixture
{
    ScriptedClock clock{at(16, 59, 49, 500)};
    CountdownTimer timer;

    explicit Fixture(const QString& nextBroadcast = u"2025-06-03T17:00:00Z"_s, const QString& label = u"Tonight"_s)
    {
        timer.setNextBroadcast(nextBroadcast);
        timer.setLabel(label);
        timer.setClock(&clock);
        timer.setRunning(true);
    }

    QString headlineAfter(std::chrono::milliseconds time)
    {
        clock.advance(time);
        return timer.headline();
    }
};

} // namespace

/** Tests when the countdown updates, on a scripted clock. */
class CountdownTimerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countdownIsShownAtOnceAndUpdatesEachSecond()
    {
        Fixture fixture;
        QVERIFY(fixture.timer.isCounting());
        QCOMPARE(fixture.timer.headline(), u"00:00:10"_s);
        QCOMPARE(fixture.timer.detail(), u"Tonight"_s);
        const QSignalSpy readings(&fixture.timer, &CountdownTimer::readingChanged);
        fixture.clock.advance(999ms);
        QCOMPARE(readings.size(), 0);
        fixture.clock.advance(1ms);
        QCOMPARE(readings.size(), 1);
        QCOMPARE(fixture.timer.headline(), u"00:00:09"_s);
        fixture.clock.advance(5s);
        QCOMPARE(readings.size(), 6);
        QCOMPARE(fixture.timer.headline(), u"00:00:04"_s);
    }

    void lateTickDoesNotDelayNext()
    {
        Fixture fixture;
        fixture.clock.stall(2400ms);
        QCOMPARE(fixture.headlineAfter(0ms), u"00:00:08"_s);
        QCOMPARE(fixture.headlineAfter(599ms), u"00:00:08"_s);
        QCOMPARE(fixture.headlineAfter(1ms), u"00:00:07"_s);
    }

    void lateTickShowsTimeOfPunctualTick()
    {
        // At each tick, 20 ms remain until the text changes. Every tick is late.
        Fixture fixture(u"2025-06-03T17:00:00.520Z"_s);
        QCOMPARE(fixture.timer.headline(), u"00:00:11"_s);
        for (const QString& text : {u"00:00:10"_s, u"00:00:09"_s, u"00:00:08"_s}) {
            fixture.clock.stall(1s - std::chrono::milliseconds(fixture.clock.elapsed().count() % 1000) + 30ms);
            QCOMPARE(fixture.headlineAfter(0ms), text);
        }
    }

    void countdownEndsAtBroadcast()
    {
        Fixture fixture(u"2025-06-03T17:00:00.500Z"_s);
        QCOMPARE(fixture.headlineAfter(10s), u"00:00:01"_s);
        fixture.clock.advance(1s);
        QVERIFY(!fixture.timer.isCounting());
        QCOMPARE(fixture.timer.headline(), u"no broadcast scheduled"_s);
        QCOMPARE(fixture.timer.detail(), u"last on the schedule · Tonight"_s);
    }

    void clockJumpIsShownAtNextTick_data()
    {
        rows<QDateTime, QString>({"now", "headline"},
                                 {{"forward", at(16, 59, 57, 200), u"00:00:02"_s},
                                  {"past the broadcast", at(18, 0), u"no broadcast scheduled"_s},
                                  {"back", at(12, 0), u"04:59:59"_s},
                                  {"back by a day", at(16, 0).addDays(-1), u"1d 00:59:59"_s},
                                  {"in another time zone", at(16, 0).toOffsetFromUtc(-5 * 3600), u"00:59:59"_s}});
    }

    void clockJumpIsShownAtNextTick()
    {
        QFETCH(QDateTime, now);
        Fixture fixture;
        fixture.clock.advance(400ms);
        fixture.clock.jumpTo(now);
        QCOMPARE(fixture.timer.headline(), u"00:00:10"_s);
        QCOMPARE(fixture.headlineAfter(599ms), u"00:00:10"_s);
        QTEST(fixture.headlineAfter(1ms), "headline");
    }

    void withoutBroadcastNothingChanges()
    {
        Fixture fixture(u"2025-06-03 17:00"_s);
        const QSignalSpy readings(&fixture.timer, &CountdownTimer::readingChanged);
        QVERIFY(!fixture.timer.isCounting());
        QCOMPARE(fixture.timer.headline(), u"no broadcast scheduled"_s);
        QCOMPARE(fixture.timer.detail(), QString());
        fixture.clock.advance(1min);
        QCOMPARE(readings.size(), 0);
    }

    void newBroadcastIsShownAtOnceAsOfLatestTick()
    {
        Fixture fixture;
        QCOMPARE(fixture.headlineAfter(2900ms), u"00:00:08"_s);
        fixture.timer.setLabel(u"This evening"_s);
        QCOMPARE(fixture.timer.detail(), u"This evening"_s);
        QCOMPARE(fixture.timer.headline(), u"00:00:08"_s);
        fixture.timer.setNextBroadcast(u"2025-06-03T18:00:00Z"_s);
        QCOMPARE(fixture.timer.headline(), u"01:00:08"_s);
        QCOMPARE(fixture.headlineAfter(100ms), u"01:00:07"_s);
    }

    void stoppedCountdownDoesNotTick()
    {
        Fixture fixture;
        fixture.timer.setRunning(false);
        QCOMPARE(fixture.clock.pendingTimers(), 0);
        QCOMPARE(fixture.headlineAfter(3700ms), u"00:00:10"_s);
        // A restart shows the time at once and keeps the times of the ticks.
        fixture.timer.setRunning(true);
        QCOMPARE(fixture.timer.headline(), u"00:00:07"_s);
        QCOMPARE(fixture.headlineAfter(299ms), u"00:00:07"_s);
        QCOMPARE(fixture.headlineAfter(1ms), u"00:00:06"_s);
        QCOMPARE(fixture.clock.pendingTimers(), 1);
    }

    void veryLongLabelIsCutToOneLine()
    {
        Fixture fixture(u"2025-06-03T17:00:00Z"_s, u"To\nnight"_s + QString(1'000'000, u'!'));
        QVERIFY(fixture.timer.detail().startsWith(u"To night!"_s));
        QVERIFY(fixture.timer.detail().size() < 6000);
    }
};

QUILLMERE_TEST(CountdownTimerTest, QCoreApplication)

} // namespace quillmere

#include "CountdownTimerTest.moc"
