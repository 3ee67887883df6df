#include "PlayerOnScript.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using std::chrono::milliseconds;
using State = PlayerController::State;
using TimeControl = VideoPlayer::TimeControl;

/** Tests scrubbing with held buttons: how far it moves, and what ends it. */
class PlayerControllerScrubTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scrubIsFasterWhenHeldLonger_data();
    void scrubIsFasterWhenHeldLonger();
    void heldArrowSkipsThenScrubs();
    void heldLeftArrowScrubsBackward();
    void fastForwardAndRewindScrubFromPress();
    void stateShowsDirectionAndSpeed();
    void scrubMovesPositionWhilePictureIsPaused();
    void positionUpdatesBetweenKeyRepeats();
    void playbackContinuesWhereKeyIsReleased();
    void pausedPlayerStaysPausedAfterScrub();
    void waitingPlayerPlaysOnAfterScrub();
    void scrubStaysWithinRecording();
    void scrubWithoutMovementDoesNotSeek();
    void scrubIsLimitedByChangedDuration();
    void reportedPositionIsIgnoredWhileScrubbing();
    void anotherKeyEndsScrub();
    void pressWithoutPriorReleaseEndsScrub();
    void playEndsScrubAndPlays();
    void releaseOfAnotherKeyDoesNotEndScrub();
    void releaseDoesNotSeekIfNoLongerSeekable();
    void failureCancelsScrub();
    void removingPlayerCancelsScrub();
    void noTimerRunsAfterScrub();
};

void PlayerControllerScrubTest::scrubIsFasterWhenHeldLonger_data()
{
    QTest::addColumn<int>("held");
    QTest::addColumn<double>("distance");
    QTest::addColumn<int>("speed");
    QTest::newRow("start") << 0 << 0.0 << 8;
    QTest::newRow("one update") << 40 << 0.32 << 8;
    QTest::newRow("one second") << 1000 << 8.0 << 8;
    QTest::newRow("just before two seconds") << 1999 << 15.992 << 8;
    QTest::newRow("two seconds") << 2000 << 16.0 << 16;
    QTest::newRow("three seconds") << 3000 << 32.0 << 16;
    QTest::newRow("four seconds") << 4000 << 48.0 << 32;
    QTest::newRow("six seconds") << 6000 << 112.0 << 64;
    QTest::newRow("eight seconds") << 8000 << 240.0 << 128;
    QTest::newRow("maximum speed") << 18000 << 1520.0 << 128;
}

void PlayerControllerScrubTest::scrubIsFasterWhenHeldLonger()
{
    QFETCH(const int, held);
    QFETCH(const double, distance);
    QFETCH(const int, speed);
    const Scrub forward{1000, 1, 5s, true};
    QCOMPARE(forward.positionAt(5s + milliseconds(held)), 1000 + distance);
    QCOMPARE(forward.speedAt(5s + milliseconds(held)), speed);
    const Scrub backward{2000, -1, 5s, true};
    QCOMPARE(backward.positionAt(5s + milliseconds(held)), 2000 - distance);
    QCOMPARE(backward.speedAt(5s + milliseconds(held)), -speed);
}

void PlayerControllerScrubTest::heldArrowSkipsThenScrubs()
{
    PlayerOnScript script;
    script.hold(Qt::Key_Right, 400ms + 3s);
    QVERIFY(script.controller.release(Qt::Key_Right));
    QCOMPARE(script.player->targets(), (QList<double>{610, 642}));
    QCOMPARE(script.player->seeks.last().tolerance, SeekTolerance::AtOrAfter);
}

void PlayerControllerScrubTest::heldLeftArrowScrubsBackward()
{
    PlayerOnScript script;
    script.hold(Qt::Key_Left, 400ms + 3s);
    QVERIFY(script.controller.release(Qt::Key_Left));
    QCOMPARE(script.player->targets(), (QList<double>{590, 558}));
}

void PlayerControllerScrubTest::fastForwardAndRewindScrubFromPress()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 3s);
    QVERIFY(script.controller.release(Qt::Key_AudioForward));
    script.hold(Qt::Key_AudioRewind, 1s);
    QVERIFY(script.controller.release(Qt::Key_AudioRewind));
    QCOMPARE(script.player->targets(), (QList<double>{632, 624}));
}

void PlayerControllerScrubTest::stateShowsDirectionAndSpeed()
{
    PlayerOnScript script;
    script.controller.press(Qt::Key_AudioForward);
    QCOMPARE(script.controller.state(), State::FastForwarding);
    QCOMPARE(script.controller.stateText(), u"Fast forward 8×"_s);
    const QSignalSpy changes(&script.controller, &PlayerController::stateChanged);
    script.clock.advance(2s);
    QCOMPARE(script.controller.stateText(), u"Fast forward 16×"_s);
    QCOMPARE(changes.count(), 1);
    QVERIFY(script.controller.isScrubbing());
    script.controller.release(Qt::Key_AudioForward);
    QCOMPARE(script.controller.state(), State::Playing);
    QVERIFY(!script.controller.isScrubbing());
    script.controller.press(Qt::Key_AudioRewind);
    QCOMPARE(script.controller.state(), State::Rewinding);
    QCOMPARE(script.controller.stateText(), u"Rewind 8×"_s);
    QVERIFY(script.controller.isScrubbing());
}

void PlayerControllerScrubTest::scrubMovesPositionWhilePictureIsPaused()
{
    PlayerOnScript script;
    script.controller.press(Qt::Key_AudioForward);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QCOMPARE(script.controller.elapsedText(), u"10:00"_s);
    script.clock.advance(4s);
    QCOMPARE(script.controller.elapsedText(), u"10:48"_s);
    QCOMPARE(script.controller.remainingText(), u"-49:12"_s);
    QCOMPARE(script.controller.progress(), 737.0 / 4096);
    QCOMPARE(script.player->seeks.size(), 0);
}

void PlayerControllerScrubTest::positionUpdatesBetweenKeyRepeats()
{
    PlayerOnScript script;
    script.controller.press(Qt::Key_AudioForward);
    const QSignalSpy moves(&script.controller, &PlayerController::timesChanged);
    script.clock.advance(1s);
    QCOMPARE(moves.count(), 8);
}

void PlayerControllerScrubTest::playbackContinuesWhereKeyIsReleased()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 3s);
    const QSignalSpy changes(&script.controller, &PlayerController::stateChanged);
    script.controller.release(Qt::Key_AudioForward);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.controller.elapsedText(), u"10:32"_s);
    QCOMPARE(script.player->calls()->last(2), (QStringList{u"seek"_s, u"play"_s}));
    QCOMPARE(changes.count(), 1); // directly from fast forward to playing
}

void PlayerControllerScrubTest::pausedPlayerStaysPausedAfterScrub()
{
    PlayerOnScript script;
    script.tap(Qt::Key_MediaPause);
    script.hold(Qt::Key_AudioForward, 3s);
    script.controller.release(Qt::Key_AudioForward);
    QCOMPARE(script.player->targets(), QList<double>{632});
    QCOMPARE(script.controller.state(), State::Paused);
}

void PlayerControllerScrubTest::waitingPlayerPlaysOnAfterScrub()
{
    PlayerOnScript script;
    script.player->setWaiting(true);
    script.hold(Qt::Key_AudioForward, 3s);
    script.controller.release(Qt::Key_AudioForward);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
}

void PlayerControllerScrubTest::scrubStaysWithinRecording()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioRewind, 30s);
    QCOMPARE(script.controller.elapsedText(), u"0:00"_s);
    script.controller.release(Qt::Key_AudioRewind);
    script.hold(Qt::Key_AudioForward, 60s);
    QCOMPARE(script.controller.elapsedText(), u"59:57"_s);
    script.controller.release(Qt::Key_AudioForward);
    QCOMPARE(script.player->targets(), (QList<double>{0, 3597}));
}

void PlayerControllerScrubTest::scrubWithoutMovementDoesNotSeek()
{
    PlayerOnScript script;
    script.player->moveTo(3599);
    script.hold(Qt::Key_AudioForward, 3s);
    script.controller.release(Qt::Key_AudioForward);
    QCOMPARE(script.player->seeks.size(), 0);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void PlayerControllerScrubTest::scrubIsLimitedByChangedDuration()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 8s);
    QCOMPARE(script.controller.elapsedText(), u"14:00"_s);
    script.player->setDuration(700);
    QCOMPARE(script.controller.elapsedText(), u"11:37"_s);
    script.controller.release(Qt::Key_AudioForward);
    QCOMPARE(script.player->targets(), QList<double>{697});
}

void PlayerControllerScrubTest::reportedPositionIsIgnoredWhileScrubbing()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 3s);
    script.player->moveTo(590);
    QCOMPARE(script.controller.elapsedText(), u"10:32"_s);
    script.controller.release(Qt::Key_AudioForward);
    QCOMPARE(script.player->targets(), QList<double>{632});
}

void PlayerControllerScrubTest::anotherKeyEndsScrub()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 3s);
    script.controller.press(Qt::Key_Right);
    QCOMPARE(script.player->targets(), (QList<double>{632, 642}));
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QVERIFY(!script.controller.release(Qt::Key_AudioForward));
    QCOMPARE(script.player->seeks.size(), 2);
}

void PlayerControllerScrubTest::pressWithoutPriorReleaseEndsScrub()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 3s);
    script.controller.press(Qt::Key_AudioForward);
    QCOMPARE(script.player->targets(), QList<double>{632});
    QCOMPARE(script.controller.stateText(), u"Fast forward 8×"_s);
    script.clock.advance(1s);
    script.controller.press(Qt::Key_Left, true);
    QCOMPARE(script.player->targets(), (QList<double>{632, 640}));
    QCOMPARE(script.controller.state(), State::Rewinding);
}

void PlayerControllerScrubTest::playEndsScrubAndPlays()
{
    PlayerOnScript script;
    script.tap(Qt::Key_MediaPause);
    script.hold(Qt::Key_AudioForward, 3s);
    script.tap(Qt::Key_MediaPlay);
    QCOMPARE(script.player->targets(), QList<double>{632});
    QCOMPARE(script.controller.state(), State::Playing);
}

void PlayerControllerScrubTest::releaseOfAnotherKeyDoesNotEndScrub()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 3s);
    QVERIFY(!script.controller.release(Qt::Key_Right));
    QCOMPARE(script.controller.state(), State::FastForwarding);
    QCOMPARE(script.player->seeks.size(), 0);
}

void PlayerControllerScrubTest::releaseDoesNotSeekIfNoLongerSeekable()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 3s);
    script.player->setSeekable(false);
    script.controller.release(Qt::Key_AudioForward);
    QCOMPARE(script.player->seeks.size(), 0);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void PlayerControllerScrubTest::failureCancelsScrub()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 3s);
    script.player->fail({});
    QCOMPARE(script.controller.state(), State::Paused);
    QVERIFY(!script.controller.press(Qt::Key_AudioForward, true));
    QVERIFY(!script.controller.release(Qt::Key_AudioForward));
    QCOMPARE(script.player->seeks.size(), 0);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
}

void PlayerControllerScrubTest::removingPlayerCancelsScrub()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 3s);
    const qsizetype calls = script.player->calls()->size();
    script.controller.setPlayer(nullptr);
    QVERIFY(!script.controller.release(Qt::Key_AudioForward));
    QCOMPARE(script.player->calls()->size(), calls);
}

void PlayerControllerScrubTest::noTimerRunsAfterScrub()
{
    PlayerOnScript script;
    script.hold(Qt::Key_AudioForward, 3s);
    script.controller.release(Qt::Key_AudioForward);
    script.clock.advance(4s);
    QCOMPARE(script.clock.pendingTimers(), 0);
}

QUILLMERE_TEST(PlayerControllerScrubTest, QCoreApplication)
#include "PlayerControllerScrubTest.moc"
