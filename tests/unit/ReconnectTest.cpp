#include "Rows.h"
#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

namespace {

/** A recording of 120 seconds that broke at 57 seconds. */
struct BrokenFixture : PlayingFixture
{
    BrokenFixture() : PlayingFixture(57) { endFile(); }
};

/** Expects an attempt after each delay and not a millisecond earlier; every attempt fails. */
void expectAttempts(StreamPlayerFixture& fixture, std::initializer_list<std::chrono::seconds> delays)
{
    for (const std::chrono::seconds delay : delays) {
        const auto before = fixture.engine->loads.size();
        fixture.clock.advance(delay - 1ms);
        QCOMPARE(fixture.engine->loads.size(), before);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.engine->loads.size(), before + 1);
        fixture.fail({Cause::Refused, 0, {}});
    }
}

} // namespace

/** Tests broken streams: when reconnection is attempted, where playback continues, and when it is given up. */
class ReconnectTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void brokenStreamContinuesWhereItBroke()
    {
        PlayingFixture fixture(20);
        QSignalSpy shown(fixture.player.get(), &VideoPlayer::pictureShown);
        fixture.moveTo(57);
        fixture.endFile();
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
        QVERIFY(fixture.player->isWaiting());
        QCOMPARE(fixture.item->status(), Status::ReadyToPlay);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.engine->loads.last().startAt, 57.0);
        QVERIFY(!fixture.engine->loads.last().isPaused);
        QCOMPARE(fixture.player->position(), 57.0);
        QCOMPARE(fixture.player->duration(), 120.0);
        fixture.showPicture(57.5);
        QCOMPARE(shown.count(), 1);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
        QCOMPARE(fixture.player->position(), 57.5);
    }

    void attemptsAreMadeAfterOneTwoFourAndEightSeconds()
    {
        BrokenFixture fixture;
        expectAttempts(fixture, {1s, 2s, 4s});
        QCOMPARE(fixture.item->status(), Status::ReadyToPlay);
        expectAttempts(fixture, {8s});
        QCOMPARE(fixture.item->status(), Status::Failed);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
        QCOMPARE(fixture.player->position(), 57.0);
        QCOMPARE(fixture.clock.pendingTimers(), 0);
    }

    void itemHasCauseOfLastFailure_data()
    {
        rows<bool, Cause, Cause>({"byError", "reported", "cause"},
                                 {{"status", true, Cause::Status, Cause::Status},
                                  {"end of file", false, Cause::Unknown, Cause::BrokenStream},
                                  {"no cause", true, Cause::Unknown, Cause::BrokenStream}});
    }
    void itemHasCauseOfLastFailure()
    {
        QFETCH(const bool, byError);
        QFETCH(const Cause, reported);
        QFETCH(const Cause, cause);
        BrokenFixture fixture;
        expectAttempts(fixture, {1s, 2s, 4s});
        fixture.reconnect(8s, 57);
        if (byError)
            fixture.fail({reported, 0, {}});
        else
            fixture.endFile();
        QCOMPARE(fixture.item->status(), Status::Failed);
        QCOMPARE(int(fixture.item->error()->cause), int(cause));
    }

    void attemptCountIsResetBeyondFurthestBreak_data()
    {
        rows<double, std::chrono::seconds>({"reached", "delay"},
                                           {{"2 seconds beyond", 59, 1s}, {"less than 2 seconds beyond", 58.99, 4s}});
    }
    void attemptCountIsResetBeyondFurthestBreak()
    {
        QFETCH(const double, reached);
        QFETCH(const std::chrono::seconds, delay);
        BrokenFixture fixture;
        fixture.reconnect(1s, 55);
        fixture.endFile();
        fixture.reconnect(2s, 55);
        fixture.moveTo(57.5);
        fixture.moveTo(reached);
        fixture.moveTo(reached - 1);
        fixture.endFile();
        expectAttempts(fixture, {delay});
    }

    void attemptCountIsResetAfterSeek()
    {
        BrokenFixture fixture;
        expectAttempts(fixture, {1s, 2s});
        fixture.reconnect(4s, 57);
        fixture.player->seek(10, SeekTolerance::AtOrAfter);
        fixture.finishSeek(10);
        fixture.endFile();
        expectAttempts(fixture, {1s});
    }

    void recordingThatNeverPlayedFailsAtOnce()
    {
        LoadingFixture fixture;
        fixture.endFile();
        QCOMPARE(fixture.item->status(), Status::Failed);
        QCOMPARE(int(fixture.item->error()->cause), int(Cause::BrokenStream));
        QCOMPARE(fixture.clock.pendingTimers(), 0);
    }

    void liveStreamIsRetriedEveryEightSecondsForever_data()
    {
        rows<bool>({"playedBefore"}, {{"that played", true}, {"that never played", false}});
    }
    void liveStreamIsRetriedEveryEightSecondsForever()
    {
        QFETCH(const bool, playedBefore);
        StreamPlayerFixture fixture;
        fixture.setItem(Kind::Live);
        fixture.player->play();
        fixture.start();
        if (playedBefore)
            fixture.showPicture(3600);
        fixture.endFile();
        expectAttempts(fixture, {8s, 8s, 8s, 8s, 8s, 8s});
        QVERIFY(fixture.engine->loads.last().isLive);
        QCOMPARE(fixture.engine->loads.last().startAt, 0.0);
        QVERIFY(fixture.item->status() != Status::Failed);
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
        fixture.reconnect(8s, 3700);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    }

    void pauseWhileReconnectingIsKept()
    {
        BrokenFixture fixture;
        fixture.player->pause();
        QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
        QVERIFY(fixture.player->isWaiting());
        fixture.clock.advance(1s);
        QVERIFY(fixture.engine->loads.last().isPaused);
        fixture.showPicture(57);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
        QVERIFY(!fixture.player->isWaiting());
    }

    void seekWhileReconnectingSetsStartPosition()
    {
        BrokenFixture fixture;
        QList<bool> done;
        fixture.player->seek(90, SeekTolerance::Nearest, [&](bool finished) { done << finished; });
        QCOMPARE(fixture.player->position(), 90.0);
        QCOMPARE(fixture.engine->loads.size(), 1);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.engine->loads.last().startAt, 90.0);
        QCOMPARE(done, QList<bool>{});
        fixture.showPicture(90);
        QCOMPARE(done, QList<bool>{true});
    }

    void removingItemWhileReconnectingCancelsIt()
    {
        BrokenFixture fixture;
        fixture.player->setItem(nullptr);
        fixture.clock.advance(1h);
        QCOMPARE(fixture.engine->loads.size(), 1);
        QVERIFY(!fixture.player->isWaiting());
    }

    void reportsOfBrokenLoadAreIgnored()
    {
        PlayingFixture fixture(57);
        fixture.clock.advance(12s);
        fixture.moveTo(100);
        fixture.endFile();
        fixture.fail({Cause::Status, 404, {}});
        QCOMPARE(fixture.player->position(), 57.0);
        expectAttempts(fixture, {1s});
    }

    void startBeyondEndIsMovedBeforeEnd()
    {
        StreamPlayerFixture fixture;
        fixture.setItem();
        fixture.player->seek(500, SeekTolerance::AtOrAfter);
        fixture.start();
        fixture.reportDuration(120);
        fixture.fail({});
        QCOMPARE(fixture.engine->loads.last().startAt, 117.0);
        QCOMPARE(fixture.item->status(), Status::Unknown);
        fixture.reportDuration(120);
        fixture.fail({Cause::Status, 500, {}});
        QCOMPARE(fixture.item->status(), Status::Failed);
    }
};

QUILLMERE_TEST(ReconnectTest, QCoreApplication)

} // namespace quillmere

#include "ReconnectTest.moc"
