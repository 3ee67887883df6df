#include "CountdownTimer.h"
#include "ScriptedClock.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QDateTime at(int hour, int minute, int second = 0, int millisecond = 0)
{
    return QDateTime(QDate(2025, 6, 3), QTime(hour, minute, second, millisecond), QTimeZone::utc());
}

/** A countdown to 17:00 that begins to tick ten seconds and a half before. */
struct Set
{
    ScriptedClock clock{at(16, 59, 49, 500)};
    Timepiece timepiece{clock};
    CountdownTimer timer;

    explicit Set(const QString& nextBroadcast = u"2025-06-03T17:00:00Z"_s, const QString& label = u"Tonight"_s)
    {
        timer.setNextBroadcast(nextBroadcast);
        timer.setLabel(label);
        timer.setTimepiece(&timepiece);
        timer.setRunning(true);
    }
};

} // namespace

/** When the countdown is read, by a clock that the test moves. */
class CountdownTimerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsReadAtOnce();
    void itIsReadAtEverySecondFromItsStart();
    void aTickThatComesLateDoesNotPutOffTheNext();
    void aTickThatComesLateIsReadAsIfItHadNot();
    void itPassesTheBroadcast();
    void aClockThatJumpsIsReadRightAtTheNextTick_data();
    void aClockThatJumpsIsReadRightAtTheNextTick();
    void withoutABroadcastNothingChanges();
    void aNewBroadcastIsReadAtOnceAsOfTheLatestTick();
    void outOfSightItDoesNotTick();
    void backInSightItIsReadAtOnceAndTicksAsBefore();
    void aVeryLongLabelIsShortenedAndOnOneLine();
};

void CountdownTimerTest::itIsReadAtOnce()
{
    Set set;
    QVERIFY(set.timer.isCounting());
    QCOMPARE(set.timer.headline(), u"00:00:10"_s);
    QCOMPARE(set.timer.detail(), u"Tonight"_s);
}

void CountdownTimerTest::itIsReadAtEverySecondFromItsStart()
{
    Set set;
    const QSignalSpy readings(&set.timer, &CountdownTimer::readingChanged);
    set.clock.advance(999ms);
    QCOMPARE(readings.size(), 0);
    set.clock.advance(1ms);
    QCOMPARE(readings.size(), 1);
    QCOMPARE(set.timer.headline(), u"00:00:09"_s);
    set.clock.advance(5s);
    QCOMPARE(readings.size(), 6);
    QCOMPARE(set.timer.headline(), u"00:00:04"_s);
}

void CountdownTimerTest::aTickThatComesLateDoesNotPutOffTheNext()
{
    Set set;
    set.clock.stall(2400ms);
    set.clock.advance(0ms);
    QCOMPARE(set.timer.headline(), u"00:00:08"_s);
    set.clock.advance(599ms);
    QCOMPARE(set.timer.headline(), u"00:00:08"_s);
    set.clock.advance(1ms);
    QCOMPARE(set.timer.headline(), u"00:00:07"_s);
}

void CountdownTimerTest::aTickThatComesLateIsReadAsIfItHadNot()
{
    // Each second begins with 20 ms to go before the text would change, and no tick is on time.
    Set set(u"2025-06-03T17:00:00.520Z"_s);
    QCOMPARE(set.timer.headline(), u"00:00:11"_s);
    for (const QString& text : {u"00:00:10"_s, u"00:00:09"_s, u"00:00:08"_s}) {
        set.clock.stall(1s - std::chrono::milliseconds(set.clock.elapsed().count() % 1000) + 30ms);
        set.clock.advance(0ms);
        QCOMPARE(set.timer.headline(), text);
    }
}

void CountdownTimerTest::itPassesTheBroadcast()
{
    Set set(u"2025-06-03T17:00:00.500Z"_s);
    set.clock.advance(10s);
    QCOMPARE(set.timer.headline(), u"00:00:01"_s);
    set.clock.advance(1s);
    QVERIFY(!set.timer.isCounting());
    QCOMPARE(set.timer.headline(), u"no broadcast scheduled"_s);
    QCOMPARE(set.timer.detail(), u"last on the schedule · Tonight"_s);
}

void CountdownTimerTest::aClockThatJumpsIsReadRightAtTheNextTick_data()
{
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<QString>("headline");
    QTest::newRow("forward") << at(16, 59, 57, 200) << u"00:00:02"_s;
    QTest::newRow("past the broadcast") << at(18, 0) << u"no broadcast scheduled"_s;
    QTest::newRow("back") << at(12, 0) << u"04:59:59"_s;
    QTest::newRow("back by a day") << at(16, 0).addDays(-1) << u"1d 00:59:59"_s;
    QTest::newRow("in another time zone") << at(16, 0).toOffsetFromUtc(-5 * 3600) << u"00:59:59"_s;
}

void CountdownTimerTest::aClockThatJumpsIsReadRightAtTheNextTick()
{
    QFETCH(QDateTime, now);
    QFETCH(QString, headline);
    Set set;
    set.clock.advance(400ms);
    set.clock.jumpTo(now);
    QCOMPARE(set.timer.headline(), u"00:00:10"_s);
    set.clock.advance(599ms);
    QCOMPARE(set.timer.headline(), u"00:00:10"_s);
    set.clock.advance(1ms);
    QCOMPARE(set.timer.headline(), headline);
}

void CountdownTimerTest::withoutABroadcastNothingChanges()
{
    Set set(u"2025-06-03 17:00"_s);
    const QSignalSpy readings(&set.timer, &CountdownTimer::readingChanged);
    QVERIFY(!set.timer.isCounting());
    QCOMPARE(set.timer.headline(), u"no broadcast scheduled"_s);
    QCOMPARE(set.timer.detail(), QString());
    set.clock.advance(1min);
    QCOMPARE(readings.size(), 0);
}

void CountdownTimerTest::aNewBroadcastIsReadAtOnceAsOfTheLatestTick()
{
    Set set;
    set.clock.advance(2900ms);
    QCOMPARE(set.timer.headline(), u"00:00:08"_s);
    set.timer.setLabel(u"This evening"_s);
    QCOMPARE(set.timer.detail(), u"This evening"_s);
    QCOMPARE(set.timer.headline(), u"00:00:08"_s);
    set.timer.setNextBroadcast(u"2025-06-03T18:00:00Z"_s);
    QCOMPARE(set.timer.headline(), u"01:00:08"_s);
    set.clock.advance(100ms);
    QCOMPARE(set.timer.headline(), u"01:00:07"_s);
}

void CountdownTimerTest::outOfSightItDoesNotTick()
{
    Set set;
    set.timer.setRunning(false);
    QCOMPARE(set.clock.pendingTimers(), 0);
    set.clock.advance(3s);
    QCOMPARE(set.timer.headline(), u"00:00:10"_s);
}

void CountdownTimerTest::backInSightItIsReadAtOnceAndTicksAsBefore()
{
    Set set;
    set.timer.setRunning(false);
    set.clock.advance(3700ms);
    set.timer.setRunning(true);
    QCOMPARE(set.timer.headline(), u"00:00:07"_s);
    set.clock.advance(299ms);
    QCOMPARE(set.timer.headline(), u"00:00:07"_s);
    set.clock.advance(1ms);
    QCOMPARE(set.timer.headline(), u"00:00:06"_s);
    QCOMPARE(set.clock.pendingTimers(), 1);
}

void CountdownTimerTest::aVeryLongLabelIsShortenedAndOnOneLine()
{
    Set set(u"2025-06-03T17:00:00Z"_s, u"To\nnight"_s + QString(1'000'000, u'!'));
    QVERIFY(set.timer.detail().startsWith(u"To night!"_s));
    QVERIFY(set.timer.detail().size() < 6000);
}

QTEST_GUILESS_MAIN(CountdownTimerTest)
#include "CountdownTimerTest.moc"
