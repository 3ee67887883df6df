#include "StreamOnScript.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using Cause = VideoFailure::Cause;
using Kind = PlayerItem::Kind;
using Status = PlayerItem::Status;
using TimeControl = VideoPlayer::TimeControl;

/** Tests broken streams: when reconnection is attempted, where playback continues, and when it is given up. */
class ReconnectTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void brokenStreamContinuesWhereItBroke();
    void attemptsAreMadeAfterOneTwoFourAndEightSeconds();
    void itemHasCauseOfLastFailure_data();
    void itemHasCauseOfLastFailure();
    void attemptCountIsResetBeyondFurthestBreak_data();
    void attemptCountIsResetBeyondFurthestBreak();
    void attemptCountIsResetAfterSeek();
    void recordingThatNeverPlayedFailsAtOnce();
    void liveStreamIsRetriedEveryEightSecondsForever_data();
    void liveStreamIsRetriedEveryEightSecondsForever();
    void pauseWhileReconnectingIsKept();
    void seekWhileReconnectingSetsStartPosition();
    void removingItemWhileReconnectingCancelsIt();
    void reportsOfBrokenLoadAreIgnored();
    void startBeyondEndIsMovedBeforeEnd();

private:
    static void expectAttempts(StreamOnScript& script, std::initializer_list<std::chrono::seconds> delays);
};

// Expects an attempt after each delay and not a millisecond earlier; every attempt fails.
void ReconnectTest::expectAttempts(StreamOnScript& script, std::initializer_list<std::chrono::seconds> delays)
{
    for (const std::chrono::seconds delay : delays) {
        const auto before = script.engine->loads.size();
        script.clock.advance(delay - 1ms);
        QCOMPARE(script.engine->loads.size(), before);
        script.clock.advance(1ms);
        QCOMPARE(script.engine->loads.size(), before + 1);
        script.fail({Cause::Refused, 0, {}});
    }
}

void ReconnectTest::brokenStreamContinuesWhereItBroke()
{
    StreamOnScript script;
    script.playFrom(20);
    QSignalSpy shown(script.player.get(), &VideoPlayer::pictureShown);
    script.moveTo(57);
    script.endFile();
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    QVERIFY(script.player->isWaiting());
    QCOMPARE(script.item->status(), Status::ReadyToPlay);
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.last().startAt, 57.0);
    QVERIFY(!script.engine->loads.last().isPaused);
    QCOMPARE(script.player->position(), 57.0);
    QCOMPARE(script.player->duration(), 120.0);
    script.showPicture(57.5);
    QCOMPARE(shown.count(), 1);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.player->position(), 57.5);
}

void ReconnectTest::attemptsAreMadeAfterOneTwoFourAndEightSeconds()
{
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    expectAttempts(script, {1s, 2s, 4s});
    QCOMPARE(script.item->status(), Status::ReadyToPlay);
    expectAttempts(script, {8s});
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QCOMPARE(script.player->position(), 57.0);
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void ReconnectTest::itemHasCauseOfLastFailure_data()
{
    QTest::addColumn<bool>("byError");
    QTest::addColumn<Cause>("reported");
    QTest::addColumn<Cause>("cause");
    QTest::newRow("status") << true << Cause::Status << Cause::Status;
    QTest::newRow("end of file") << false << Cause::Unknown << Cause::BrokenStream;
    QTest::newRow("no cause") << true << Cause::Unknown << Cause::BrokenStream;
}

void ReconnectTest::itemHasCauseOfLastFailure()
{
    QFETCH(const bool, byError);
    QFETCH(const Cause, reported);
    QFETCH(const Cause, cause);
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    expectAttempts(script, {1s, 2s, 4s});
    script.clock.advance(8s);
    script.showPicture(57);
    if (byError)
        script.fail({reported, 0, {}});
    else
        script.endFile();
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(int(script.item->error()->cause), int(cause));
}

void ReconnectTest::attemptCountIsResetBeyondFurthestBreak_data()
{
    QTest::addColumn<double>("reached");
    QTest::addColumn<std::chrono::seconds>("delay");
    QTest::newRow("2 seconds beyond") << 59.0 << std::chrono::seconds(1);
    QTest::newRow("less than 2 seconds beyond") << 58.99 << std::chrono::seconds(4);
}

void ReconnectTest::attemptCountIsResetBeyondFurthestBreak()
{
    QFETCH(const double, reached);
    QFETCH(const std::chrono::seconds, delay);
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    script.clock.advance(1s);
    script.showPicture(55);
    script.endFile();
    script.clock.advance(2s);
    script.showPicture(55);
    script.moveTo(57.5);
    script.moveTo(reached);
    script.moveTo(reached - 1);
    script.endFile();
    expectAttempts(script, {delay});
}

void ReconnectTest::attemptCountIsResetAfterSeek()
{
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    expectAttempts(script, {1s, 2s});
    script.clock.advance(4s);
    script.showPicture(57);
    script.player->seek(10, SeekTolerance::AtOrAfter);
    script.finishSeek(10);
    script.endFile();
    expectAttempts(script, {1s});
}

void ReconnectTest::recordingThatNeverPlayedFailsAtOnce()
{
    StreamOnScript script;
    script.setItem();
    script.start();
    script.endFile();
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(int(script.item->error()->cause), int(Cause::BrokenStream));
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void ReconnectTest::liveStreamIsRetriedEveryEightSecondsForever_data()
{
    QTest::addColumn<bool>("playedBefore");
    QTest::newRow("that played") << true;
    QTest::newRow("that never played") << false;
}

void ReconnectTest::liveStreamIsRetriedEveryEightSecondsForever()
{
    QFETCH(const bool, playedBefore);
    StreamOnScript script;
    script.setItem(Kind::Live);
    script.player->play();
    script.start();
    if (playedBefore)
        script.showPicture(3600);
    script.endFile();
    expectAttempts(script, {8s, 8s, 8s, 8s, 8s, 8s});
    QVERIFY(script.engine->loads.last().isLive);
    QCOMPARE(script.engine->loads.last().startAt, 0.0);
    QVERIFY(script.item->status() != Status::Failed);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    script.clock.advance(8s);
    script.showPicture(3700);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void ReconnectTest::pauseWhileReconnectingIsKept()
{
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    script.player->pause();
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QVERIFY(script.player->isWaiting());
    script.clock.advance(1s);
    QVERIFY(script.engine->loads.last().isPaused);
    script.showPicture(57);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QVERIFY(!script.player->isWaiting());
}

void ReconnectTest::seekWhileReconnectingSetsStartPosition()
{
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    QList<bool> done;
    script.player->seek(90, SeekTolerance::Nearest, [&](bool finished) { done << finished; });
    QCOMPARE(script.player->position(), 90.0);
    QCOMPARE(script.engine->loads.size(), 1);
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.last().startAt, 90.0);
    QCOMPARE(done, QList<bool>{});
    script.showPicture(90);
    QCOMPARE(done, QList<bool>{true});
}

void ReconnectTest::removingItemWhileReconnectingCancelsIt()
{
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    script.player->setItem(nullptr);
    script.clock.advance(1h);
    QCOMPARE(script.engine->loads.size(), 1);
    QVERIFY(!script.player->isWaiting());
}

void ReconnectTest::reportsOfBrokenLoadAreIgnored()
{
    StreamOnScript script;
    script.playFrom(57);
    script.clock.advance(12s);
    script.moveTo(100);
    script.endFile();
    script.fail({Cause::Status, 404, {}});
    QCOMPARE(script.player->position(), 57.0);
    expectAttempts(script, {1s});
}

void ReconnectTest::startBeyondEndIsMovedBeforeEnd()
{
    StreamOnScript script;
    script.setItem();
    script.player->seek(500, SeekTolerance::AtOrAfter);
    script.start();
    script.reportDuration(120);
    script.fail({});
    QCOMPARE(script.engine->loads.last().startAt, 117.0);
    QCOMPARE(script.item->status(), Status::Unknown);
    script.reportDuration(120);
    script.fail({Cause::Status, 500, {}});
    QCOMPARE(script.item->status(), Status::Failed);
}

QUILLMERE_TEST(ReconnectTest, QCoreApplication)
#include "ReconnectTest.moc"
