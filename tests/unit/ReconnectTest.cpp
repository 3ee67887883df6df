#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

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
    static void expectAttempts(StreamPlayerFixture& fixture, std::initializer_list<std::chrono::seconds> delays);
};

// Expects an attempt after each delay and not a millisecond earlier; every attempt fails.
void ReconnectTest::expectAttempts(StreamPlayerFixture& fixture, std::initializer_list<std::chrono::seconds> delays)
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

void ReconnectTest::brokenStreamContinuesWhereItBroke()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(20);
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

void ReconnectTest::attemptsAreMadeAfterOneTwoFourAndEightSeconds()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(57);
    fixture.endFile();
    expectAttempts(fixture, {1s, 2s, 4s});
    QCOMPARE(fixture.item->status(), Status::ReadyToPlay);
    expectAttempts(fixture, {8s});
    QCOMPARE(fixture.item->status(), Status::Failed);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QCOMPARE(fixture.player->position(), 57.0);
    QCOMPARE(fixture.clock.pendingTimers(), 0);
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
    StreamPlayerFixture fixture;
    fixture.playFrom(57);
    fixture.endFile();
    expectAttempts(fixture, {1s, 2s, 4s});
    fixture.clock.advance(8s);
    fixture.showPicture(57);
    if (byError)
        fixture.fail({reported, 0, {}});
    else
        fixture.endFile();
    QCOMPARE(fixture.item->status(), Status::Failed);
    QCOMPARE(int(fixture.item->error()->cause), int(cause));
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
    StreamPlayerFixture fixture;
    fixture.playFrom(57);
    fixture.endFile();
    fixture.clock.advance(1s);
    fixture.showPicture(55);
    fixture.endFile();
    fixture.clock.advance(2s);
    fixture.showPicture(55);
    fixture.moveTo(57.5);
    fixture.moveTo(reached);
    fixture.moveTo(reached - 1);
    fixture.endFile();
    expectAttempts(fixture, {delay});
}

void ReconnectTest::attemptCountIsResetAfterSeek()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(57);
    fixture.endFile();
    expectAttempts(fixture, {1s, 2s});
    fixture.clock.advance(4s);
    fixture.showPicture(57);
    fixture.player->seek(10, SeekTolerance::AtOrAfter);
    fixture.finishSeek(10);
    fixture.endFile();
    expectAttempts(fixture, {1s});
}

void ReconnectTest::recordingThatNeverPlayedFailsAtOnce()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.start();
    fixture.endFile();
    QCOMPARE(fixture.item->status(), Status::Failed);
    QCOMPARE(int(fixture.item->error()->cause), int(Cause::BrokenStream));
    QCOMPARE(fixture.clock.pendingTimers(), 0);
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
    fixture.clock.advance(8s);
    fixture.showPicture(3700);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
}

void ReconnectTest::pauseWhileReconnectingIsKept()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(57);
    fixture.endFile();
    fixture.player->pause();
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QVERIFY(fixture.player->isWaiting());
    fixture.clock.advance(1s);
    QVERIFY(fixture.engine->loads.last().isPaused);
    fixture.showPicture(57);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QVERIFY(!fixture.player->isWaiting());
}

void ReconnectTest::seekWhileReconnectingSetsStartPosition()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(57);
    fixture.endFile();
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

void ReconnectTest::removingItemWhileReconnectingCancelsIt()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(57);
    fixture.endFile();
    fixture.player->setItem(nullptr);
    fixture.clock.advance(1h);
    QCOMPARE(fixture.engine->loads.size(), 1);
    QVERIFY(!fixture.player->isWaiting());
}

void ReconnectTest::reportsOfBrokenLoadAreIgnored()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(57);
    fixture.clock.advance(12s);
    fixture.moveTo(100);
    fixture.endFile();
    fixture.fail({Cause::Status, 404, {}});
    QCOMPARE(fixture.player->position(), 57.0);
    expectAttempts(fixture, {1s});
}

void ReconnectTest::startBeyondEndIsMovedBeforeEnd()
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

QUILLMERE_TEST(ReconnectTest, QCoreApplication)

} // namespace quillmere

#include "ReconnectTest.moc"
