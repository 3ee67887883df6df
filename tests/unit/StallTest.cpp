#include "Rows.h"
#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

/** Tests which streams without progress are treated as stalled. */
class StallTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stallOfTwelveSecondsIsTreatedAsBreak()
    {
        PlayingFixture fixture(20);
        fixture.clock.advance(5s);
        fixture.moveTo(25);
        fixture.clock.advance(12s - 1ms);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
        QCOMPARE(fixture.engine->stops, 1);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.engine->loads.last().startAt, 25.0);
    }

    void movementWithinTwelveSecondsIsNoStall()
    {
        PlayingFixture fixture(20);
        for (int step = 1; step <= 5; ++step) {
            fixture.clock.advance(11s);
            fixture.moveTo(20 + step);
        }
        fixture.moveTo(25); // the same position again
        fixture.clock.advance(11s);
        QCOMPARE(fixture.engine->loads.size(), 1);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    }

    void pausedStreamDoesNotStallAndStallTimeStartsWhenItResumes()
    {
        PlayingFixture fixture(20);
        fixture.clock.advance(11s);
        fixture.player->pause();
        fixture.clock.advance(1h);
        QCOMPARE(fixture.engine->stops, 0);
        QCOMPARE(fixture.clock.pendingTimers(), 0);
        fixture.player->play();
        fixture.clock.advance(12s - 1ms);
        QCOMPARE(fixture.engine->stops, 0);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.engine->stops, 1);
    }

    void firstPictureMayTakeThirtySeconds_data()
    {
        rows<Kind, bool, Status>({"kind", "isPaused", "status"}, {{"recording", Kind::Recording, false, Status::Failed},
                                                                  {"paused", Kind::Recording, true, Status::Failed},
                                                                  {"live", Kind::Live, false, Status::Unknown}});
    }
    void firstPictureMayTakeThirtySeconds()
    {
        QFETCH(const Kind, kind);
        QFETCH(const bool, isPaused);
        StreamPlayerFixture fixture;
        fixture.setItem(kind);
        if (!isPaused)
            fixture.player->play();
        fixture.start();
        fixture.reportDuration(120); // a slow server that has sent only the duration
        fixture.clock.advance(30s - 1ms);
        QCOMPARE(fixture.engine->stops, 0);
        QCOMPARE(fixture.item->status(), Status::Unknown);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.engine->stops, 1);
        QTEST(fixture.item->status(), "status");
        if (kind == Kind::Recording)
            QCOMPARE(int(fixture.item->error()->cause), int(Cause::TimedOut));
        fixture.clock.advance(8s);
        QCOMPARE(fixture.engine->loads.size(), kind == Kind::Live ? 2 : 1);
    }

    void pictureAfterReconnectMayTakeThirtySeconds()
    {
        PlayingFixture fixture(20);
        fixture.endFile();
        fixture.clock.advance(1s);
        QCOMPARE(fixture.engine->loads.size(), 2);
        fixture.clock.advance(30s);
        QCOMPARE(fixture.engine->stops, 1);
        QCOMPARE(fixture.item->status(), Status::ReadyToPlay);
        fixture.clock.advance(2s);
        QCOMPARE(fixture.engine->loads.size(), 3);
    }

    void pictureTimeoutStartsWithLoad()
    {
        StreamPlayerFixture fixture;
        fixture.setItem();
        fixture.clock.advance(1h);
        QCOMPARE(fixture.item->status(), Status::Unknown);
        fixture.start();
        fixture.clock.advance(29s);
        fixture.player->seek(60, SeekTolerance::AtOrAfter);
        fixture.clock.advance(30s - 1ms);
        QCOMPARE(fixture.item->status(), Status::Unknown);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.item->status(), Status::Failed);
    }

    void bufferingForTwelveSecondsIsStall()
    {
        PlayingFixture fixture(20);
        fixture.setWaiting(true);
        fixture.clock.advance(12s);
        QCOMPARE(fixture.engine->stops, 1);
        fixture.reconnect(1s, 20);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    }

    void stallAtEndIsTreatedAsEnd()
    {
        PlayingFixture fixture(20);
        QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
        fixture.moveTo(119);
        fixture.clock.advance(12s);
        QCOMPARE(ended.count(), 1);
    }
};

QUILLMERE_TEST(StallTest, QCoreApplication)

} // namespace quillmere

#include "StallTest.moc"
