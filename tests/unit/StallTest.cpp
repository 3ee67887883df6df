#include "StreamOnScript.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using Cause = VideoFailure::Cause;
using Kind = PlayerItem::Kind;
using Status = PlayerItem::Status;
using TimeControl = VideoPlayer::TimeControl;

/** Tests which streams without progress are treated as stalled. */
class StallTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stallOfTwelveSecondsIsTreatedAsBreak();
    void movementWithinTwelveSecondsIsNoStall();
    void pausedStreamDoesNotStall();
    void stallTimeStartsWhenPlaybackResumes();
    void firstPictureMayTakeThirtySeconds_data();
    void firstPictureMayTakeThirtySeconds();
    void pictureAfterReconnectMayTakeThirtySeconds();
    void pictureTimeoutStartsWithLoad();
    void bufferingForTwelveSecondsIsStall();
    void stallAtEndIsTreatedAsEnd();
};

void StallTest::stallOfTwelveSecondsIsTreatedAsBreak()
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

void StallTest::movementWithinTwelveSecondsIsNoStall()
{
    StreamOnScript script;
    script.playFrom(20);
    for (int step = 1; step <= 5; ++step) {
        script.clock.advance(11s);
        script.moveTo(20 + step);
    }
    script.moveTo(25); // the same position again
    script.clock.advance(11s);
    QCOMPARE(script.engine->loads.size(), 1);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void StallTest::pausedStreamDoesNotStall()
{
    StreamOnScript script;
    script.playFrom(20);
    script.player->pause();
    script.clock.advance(1h);
    QCOMPARE(script.engine->stops, 0);
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void StallTest::stallTimeStartsWhenPlaybackResumes()
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

void StallTest::firstPictureMayTakeThirtySeconds_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("isPaused");
    QTest::addColumn<Status>("status");
    QTest::newRow("recording") << Kind::Recording << false << Status::Failed;
    QTest::newRow("paused") << Kind::Recording << true << Status::Failed;
    QTest::newRow("live") << Kind::Live << false << Status::Unknown;
}

void StallTest::firstPictureMayTakeThirtySeconds()
{
    QFETCH(const Kind, kind);
    QFETCH(const bool, isPaused);
    StreamOnScript script;
    script.setItem(kind);
    if (!isPaused)
        script.player->play();
    script.start();
    script.reportDuration(120); // a slow server that has sent only the duration
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

void StallTest::pictureAfterReconnectMayTakeThirtySeconds()
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

void StallTest::pictureTimeoutStartsWithLoad()
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

void StallTest::bufferingForTwelveSecondsIsStall()
{
    StreamOnScript script;
    script.playFrom(20);
    script.setWaiting(true);
    script.clock.advance(12s);
    QCOMPARE(script.engine->stops, 1);
    script.clock.advance(1s);
    script.showPicture(20);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void StallTest::stallAtEndIsTreatedAsEnd()
{
    StreamOnScript script;
    script.playFrom(20);
    QSignalSpy ended(script.item.get(), &PlayerItem::didPlayToEnd);
    script.moveTo(119);
    script.clock.advance(12s);
    QCOMPARE(ended.count(), 1);
}

QUILLMERE_TEST(StallTest, QCoreApplication)
#include "StallTest.moc"
