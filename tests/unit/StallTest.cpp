#include "StreamOnScript.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using Cause = VideoFailure::Cause;
using Kind = PlayerItem::Kind;
using Status = PlayerItem::Status;
using TimeControl = VideoPlayer::TimeControl;

/** Streams that stand still, and those that may. */
class StallTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStallOfTwelveSecondsIsABreak();
    void aMoveInTimeIsNoStall();
    void aPausedStreamDoesNotStall();
    void aStallCountsFromPlayingOn();
    void aPictureIsWaitedForThirtySeconds_data();
    void aPictureIsWaitedForThirtySeconds();
    void aBrokenStreamsPictureIsWaitedForAgain();
    void theWaitForAPictureBeginsWithTheLoad();
    void bufferingIsAStallInTheEnd();
    void aStallAtTheEndIsTheEnd();
};

void StallTest::aStallOfTwelveSecondsIsABreak()
{
    StreamOnScript script;
    script.playFrom(20);
    script.clock.advance(5s);
    script.moveTo(25);
    script.clock.advance(12s - 1ms);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    script.clock.advance(1ms);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    QCOMPARE(script.engine->stops, 1);
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.last().startAt, 25.0);
}

void StallTest::aMoveInTimeIsNoStall()
{
    StreamOnScript script;
    script.playFrom(20);
    for (int step = 1; step <= 5; ++step) {
        script.clock.advance(11s);
        script.moveTo(20 + step);
    }
    script.moveTo(25); // no move at all
    script.clock.advance(11s);
    QCOMPARE(script.engine->loads.size(), 1);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void StallTest::aPausedStreamDoesNotStall()
{
    StreamOnScript script;
    script.playFrom(20);
    script.player->pause();
    script.clock.advance(1h);
    QCOMPARE(script.engine->stops, 0);
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void StallTest::aStallCountsFromPlayingOn()
{
    StreamOnScript script;
    script.playFrom(20);
    script.clock.advance(11s);
    script.player->pause();
    script.clock.advance(1h);
    script.player->play();
    script.clock.advance(12s - 1ms);
    QCOMPARE(script.engine->stops, 0);
    script.clock.advance(1ms);
    QCOMPARE(script.engine->stops, 1);
}

void StallTest::aPictureIsWaitedForThirtySeconds_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("isPaused");
    QTest::addColumn<Status>("status");
    QTest::newRow("recording") << Kind::Recording << false << Status::Failed;
    QTest::newRow("paused") << Kind::Recording << true << Status::Failed;
    QTest::newRow("live") << Kind::Live << false << Status::Unknown;
}

void StallTest::aPictureIsWaitedForThirtySeconds()
{
    QFETCH(const Kind, kind);
    QFETCH(const bool, isPaused);
    StreamOnScript script;
    script.setItem(kind);
    if (!isPaused)
        script.player->play();
    script.start();
    script.know(120); // a server that says little by little
    script.clock.advance(30s - 1ms);
    QCOMPARE(script.engine->stops, 0);
    QCOMPARE(script.item->status(), Status::Unknown);
    script.clock.advance(1ms);
    QCOMPARE(script.engine->stops, 1);
    QTEST(script.item->status(), "status");
    if (kind == Kind::Recording)
        QCOMPARE(int(script.item->error()->cause), int(Cause::TimedOut));
    script.clock.advance(8s);
    QCOMPARE(script.engine->loads.size(), kind == Kind::Live ? 2 : 1);
}

void StallTest::aBrokenStreamsPictureIsWaitedForAgain()
{
    StreamOnScript script;
    script.playFrom(20);
    script.endFile();
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.size(), 2);
    script.clock.advance(30s);
    QCOMPARE(script.engine->stops, 1);
    QCOMPARE(script.item->status(), Status::ReadyToPlay);
    script.clock.advance(2s);
    QCOMPARE(script.engine->loads.size(), 3);
}

void StallTest::theWaitForAPictureBeginsWithTheLoad()
{
    StreamOnScript script;
    script.setItem();
    script.clock.advance(1h);
    QCOMPARE(script.item->status(), Status::Unknown);
    script.start();
    script.clock.advance(29s);
    script.player->seek(60, SeekTolerance::AtOrAfter);
    script.clock.advance(30s - 1ms);
    QCOMPARE(script.item->status(), Status::Unknown);
    script.clock.advance(1ms);
    QCOMPARE(script.item->status(), Status::Failed);
}

void StallTest::bufferingIsAStallInTheEnd()
{
    StreamOnScript script;
    script.playFrom(20);
    script.wait(true);
    script.clock.advance(12s);
    QCOMPARE(script.engine->stops, 1);
    script.clock.advance(1s);
    script.show(20);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void StallTest::aStallAtTheEndIsTheEnd()
{
    StreamOnScript script;
    script.playFrom(20);
    QSignalSpy ended(script.item.get(), &PlayerItem::didPlayToEnd);
    script.moveTo(119);
    script.clock.advance(12s);
    QCOMPARE(ended.count(), 1);
}

QTEST_GUILESS_MAIN(StallTest)
#include "StallTest.moc"
