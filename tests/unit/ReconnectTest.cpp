#include "StreamOnScript.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using Cause = VideoFailure::Cause;
using Kind = PlayerItem::Kind;
using Status = PlayerItem::Status;
using TimeControl = VideoPlayer::TimeControl;

/** Broken streams: when they are tried again, where they go on, and when they are given up. */
class ReconnectTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBrokenStreamGoesOnWhereItBroke();
    void attemptsComeAfterOneTwoFourAndEightSeconds();
    void theCauseOfTheLastFailureIsTheItems_data();
    void theCauseOfTheLastFailureIsTheItems();
    void theCountStartsAnewBeyondTheFurthestBreak_data();
    void theCountStartsAnewBeyondTheFurthestBreak();
    void aSeekThatLandedStartsTheCountAnew();
    void aRecordingThatNeverPlayedFailsAtOnce();
    void aLiveStreamIsTriedEveryEightSecondsForEver_data();
    void aLiveStreamIsTriedEveryEightSecondsForEver();
    void pausingWhileReconnectingHolds();
    void seekingWhileReconnectingIsWhereItGoesOn();
    void lettingGoWhileReconnectingEndsIt();
    void reportsOfTheBrokenLoadAreDropped();
    void aStartBeyondTheEndIsMadeNearer();

private:
    static void expectAttempts(StreamOnScript& script, std::initializer_list<std::chrono::seconds> delays);
};

// Each attempt fails; none comes a millisecond early.
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

void ReconnectTest::aBrokenStreamGoesOnWhereItBroke()
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
    script.show(57.5);
    QCOMPARE(shown.count(), 1);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.player->position(), 57.5);
}

void ReconnectTest::attemptsComeAfterOneTwoFourAndEightSeconds()
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

void ReconnectTest::theCauseOfTheLastFailureIsTheItems_data()
{
    QTest::addColumn<bool>("byError");
    QTest::addColumn<Cause>("told");
    QTest::addColumn<Cause>("cause");
    QTest::newRow("status") << true << Cause::Status << Cause::Status;
    QTest::newRow("end of file") << false << Cause::Unknown << Cause::BrokenStream;
    QTest::newRow("no cause") << true << Cause::Unknown << Cause::BrokenStream;
}

void ReconnectTest::theCauseOfTheLastFailureIsTheItems()
{
    QFETCH(const bool, byError);
    QFETCH(const Cause, told);
    QFETCH(const Cause, cause);
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    expectAttempts(script, {1s, 2s, 4s});
    script.clock.advance(8s);
    script.show(57);
    if (byError)
        script.fail({told, 0, {}});
    else
        script.endFile();
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(int(script.item->error()->cause), int(cause));
}

void ReconnectTest::theCountStartsAnewBeyondTheFurthestBreak_data()
{
    QTest::addColumn<double>("reached");
    QTest::addColumn<std::chrono::seconds>("delay");
    QTest::newRow("2 seconds beyond") << 59.0 << std::chrono::seconds(1);
    QTest::newRow("a little less") << 58.99 << std::chrono::seconds(4);
}

void ReconnectTest::theCountStartsAnewBeyondTheFurthestBreak()
{
    QFETCH(const double, reached);
    QFETCH(const std::chrono::seconds, delay);
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    script.clock.advance(1s);
    script.show(55);
    script.endFile();
    script.clock.advance(2s);
    script.show(55);
    script.moveTo(57.5);
    script.moveTo(reached);
    script.moveTo(reached - 1);
    script.endFile();
    expectAttempts(script, {delay});
}

void ReconnectTest::aSeekThatLandedStartsTheCountAnew()
{
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    expectAttempts(script, {1s, 2s});
    script.clock.advance(4s);
    script.show(57);
    script.player->seek(10, SeekTolerance::AtOrAfter);
    script.land(10);
    script.endFile();
    expectAttempts(script, {1s});
}

void ReconnectTest::aRecordingThatNeverPlayedFailsAtOnce()
{
    StreamOnScript script;
    script.setItem();
    script.start();
    script.endFile();
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(int(script.item->error()->cause), int(Cause::BrokenStream));
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void ReconnectTest::aLiveStreamIsTriedEveryEightSecondsForEver_data()
{
    QTest::addColumn<bool>("playedBefore");
    QTest::newRow("that played") << true;
    QTest::newRow("that never played") << false;
}

void ReconnectTest::aLiveStreamIsTriedEveryEightSecondsForEver()
{
    QFETCH(const bool, playedBefore);
    StreamOnScript script;
    script.setItem(Kind::Live);
    script.player->play();
    script.start();
    if (playedBefore)
        script.show(3600);
    script.endFile();
    expectAttempts(script, {8s, 8s, 8s, 8s, 8s, 8s});
    QVERIFY(script.engine->loads.last().isLive);
    QCOMPARE(script.engine->loads.last().startAt, 0.0);
    QVERIFY(script.item->status() != Status::Failed);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    script.clock.advance(8s);
    script.show(3700);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void ReconnectTest::pausingWhileReconnectingHolds()
{
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    script.player->pause();
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QVERIFY(script.player->isWaiting());
    script.clock.advance(1s);
    QVERIFY(script.engine->loads.last().isPaused);
    script.show(57);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QVERIFY(!script.player->isWaiting());
}

void ReconnectTest::seekingWhileReconnectingIsWhereItGoesOn()
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
    script.show(90);
    QCOMPARE(done, QList<bool>{true});
}

void ReconnectTest::lettingGoWhileReconnectingEndsIt()
{
    StreamOnScript script;
    script.playFrom(57);
    script.endFile();
    script.player->setItem(nullptr);
    script.clock.advance(1h);
    QCOMPARE(script.engine->loads.size(), 1);
    QVERIFY(!script.player->isWaiting());
}

void ReconnectTest::reportsOfTheBrokenLoadAreDropped()
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

void ReconnectTest::aStartBeyondTheEndIsMadeNearer()
{
    StreamOnScript script;
    script.setItem();
    script.player->seek(500, SeekTolerance::AtOrAfter);
    script.start();
    script.know(120);
    script.fail({});
    QCOMPARE(script.engine->loads.last().startAt, 117.0);
    QCOMPARE(script.item->status(), Status::Unknown);
    script.know(120);
    script.fail({Cause::Status, 500, {}});
    QCOMPARE(script.item->status(), Status::Failed);
}

QTEST_GUILESS_MAIN(ReconnectTest)
#include "ReconnectTest.moc"
