#include "PlayerControllerFixture.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace quillmere {

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
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_Right, 400ms + 3s);
    QVERIFY(fixture.controller.release(Qt::Key_Right));
    QCOMPARE(fixture.player->targets(), (QList<double>{610, 642}));
    QCOMPARE(fixture.player->seeks.last().tolerance, SeekTolerance::AtOrAfter);
}

void PlayerControllerScrubTest::heldLeftArrowScrubsBackward()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_Left, 400ms + 3s);
    QVERIFY(fixture.controller.release(Qt::Key_Left));
    QCOMPARE(fixture.player->targets(), (QList<double>{590, 558}));
}

void PlayerControllerScrubTest::fastForwardAndRewindScrubFromPress()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 3s);
    QVERIFY(fixture.controller.release(Qt::Key_AudioForward));
    fixture.hold(Qt::Key_AudioRewind, 1s);
    QVERIFY(fixture.controller.release(Qt::Key_AudioRewind));
    QCOMPARE(fixture.player->targets(), (QList<double>{632, 624}));
}

void PlayerControllerScrubTest::stateShowsDirectionAndSpeed()
{
    PlayerControllerFixture fixture;
    fixture.controller.press(Qt::Key_AudioForward);
    QCOMPARE(fixture.controller.state(), State::FastForwarding);
    QCOMPARE(fixture.controller.stateText(), u"Fast forward 8×"_s);
    const QSignalSpy changes(&fixture.controller, &PlayerController::stateChanged);
    fixture.clock.advance(2s);
    QCOMPARE(fixture.controller.stateText(), u"Fast forward 16×"_s);
    QCOMPARE(changes.count(), 1);
    QVERIFY(fixture.controller.isScrubbing());
    fixture.controller.release(Qt::Key_AudioForward);
    QCOMPARE(fixture.controller.state(), State::Playing);
    QVERIFY(!fixture.controller.isScrubbing());
    fixture.controller.press(Qt::Key_AudioRewind);
    QCOMPARE(fixture.controller.state(), State::Rewinding);
    QCOMPARE(fixture.controller.stateText(), u"Rewind 8×"_s);
    QVERIFY(fixture.controller.isScrubbing());
}

void PlayerControllerScrubTest::scrubMovesPositionWhilePictureIsPaused()
{
    PlayerControllerFixture fixture;
    fixture.controller.press(Qt::Key_AudioForward);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QCOMPARE(fixture.controller.elapsedText(), u"10:00"_s);
    fixture.clock.advance(4s);
    QCOMPARE(fixture.controller.elapsedText(), u"10:48"_s);
    QCOMPARE(fixture.controller.remainingText(), u"-49:12"_s);
    QCOMPARE(fixture.controller.progress(), 737.0 / 4096);
    QCOMPARE(fixture.player->seeks.size(), 0);
}

void PlayerControllerScrubTest::positionUpdatesBetweenKeyRepeats()
{
    PlayerControllerFixture fixture;
    fixture.controller.press(Qt::Key_AudioForward);
    const QSignalSpy moves(&fixture.controller, &PlayerController::timesChanged);
    fixture.clock.advance(1s);
    QCOMPARE(moves.count(), 8);
}

void PlayerControllerScrubTest::playbackContinuesWhereKeyIsReleased()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 3s);
    const QSignalSpy changes(&fixture.controller, &PlayerController::stateChanged);
    fixture.controller.release(Qt::Key_AudioForward);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    QCOMPARE(fixture.controller.elapsedText(), u"10:32"_s);
    QCOMPARE(fixture.player->calls()->last(2), (QStringList{u"seek"_s, u"play"_s}));
    QCOMPARE(changes.count(), 1); // directly from fast forward to playing
}

void PlayerControllerScrubTest::pausedPlayerStaysPausedAfterScrub()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_MediaPause);
    fixture.hold(Qt::Key_AudioForward, 3s);
    fixture.controller.release(Qt::Key_AudioForward);
    QCOMPARE(fixture.player->targets(), QList<double>{632});
    QCOMPARE(fixture.controller.state(), State::Paused);
}

void PlayerControllerScrubTest::waitingPlayerPlaysOnAfterScrub()
{
    PlayerControllerFixture fixture;
    fixture.player->setWaiting(true);
    fixture.hold(Qt::Key_AudioForward, 3s);
    fixture.controller.release(Qt::Key_AudioForward);
    QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
}

void PlayerControllerScrubTest::scrubStaysWithinRecording()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioRewind, 30s);
    QCOMPARE(fixture.controller.elapsedText(), u"0:00"_s);
    fixture.controller.release(Qt::Key_AudioRewind);
    fixture.hold(Qt::Key_AudioForward, 60s);
    QCOMPARE(fixture.controller.elapsedText(), u"59:57"_s);
    fixture.controller.release(Qt::Key_AudioForward);
    QCOMPARE(fixture.player->targets(), (QList<double>{0, 3597}));
}

void PlayerControllerScrubTest::scrubWithoutMovementDoesNotSeek()
{
    PlayerControllerFixture fixture;
    fixture.player->moveTo(3599);
    fixture.hold(Qt::Key_AudioForward, 3s);
    fixture.controller.release(Qt::Key_AudioForward);
    QCOMPARE(fixture.player->seeks.size(), 0);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
}

void PlayerControllerScrubTest::scrubIsLimitedByChangedDuration()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 8s);
    QCOMPARE(fixture.controller.elapsedText(), u"14:00"_s);
    fixture.player->setDuration(700);
    QCOMPARE(fixture.controller.elapsedText(), u"11:37"_s);
    fixture.controller.release(Qt::Key_AudioForward);
    QCOMPARE(fixture.player->targets(), QList<double>{697});
}

void PlayerControllerScrubTest::reportedPositionIsIgnoredWhileScrubbing()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 3s);
    fixture.player->moveTo(590);
    QCOMPARE(fixture.controller.elapsedText(), u"10:32"_s);
    fixture.controller.release(Qt::Key_AudioForward);
    QCOMPARE(fixture.player->targets(), QList<double>{632});
}

void PlayerControllerScrubTest::anotherKeyEndsScrub()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 3s);
    fixture.controller.press(Qt::Key_Right);
    QCOMPARE(fixture.player->targets(), (QList<double>{632, 642}));
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    QVERIFY(!fixture.controller.release(Qt::Key_AudioForward));
    QCOMPARE(fixture.player->seeks.size(), 2);
}

void PlayerControllerScrubTest::pressWithoutPriorReleaseEndsScrub()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 3s);
    fixture.controller.press(Qt::Key_AudioForward);
    QCOMPARE(fixture.player->targets(), QList<double>{632});
    QCOMPARE(fixture.controller.stateText(), u"Fast forward 8×"_s);
    fixture.clock.advance(1s);
    fixture.controller.press(Qt::Key_Left, true);
    QCOMPARE(fixture.player->targets(), (QList<double>{632, 640}));
    QCOMPARE(fixture.controller.state(), State::Rewinding);
}

void PlayerControllerScrubTest::playEndsScrubAndPlays()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_MediaPause);
    fixture.hold(Qt::Key_AudioForward, 3s);
    fixture.tap(Qt::Key_MediaPlay);
    QCOMPARE(fixture.player->targets(), QList<double>{632});
    QCOMPARE(fixture.controller.state(), State::Playing);
}

void PlayerControllerScrubTest::releaseOfAnotherKeyDoesNotEndScrub()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 3s);
    QVERIFY(!fixture.controller.release(Qt::Key_Right));
    QCOMPARE(fixture.controller.state(), State::FastForwarding);
    QCOMPARE(fixture.player->seeks.size(), 0);
}

void PlayerControllerScrubTest::releaseDoesNotSeekIfNoLongerSeekable()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 3s);
    fixture.player->setSeekable(false);
    fixture.controller.release(Qt::Key_AudioForward);
    QCOMPARE(fixture.player->seeks.size(), 0);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
}

void PlayerControllerScrubTest::failureCancelsScrub()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 3s);
    fixture.player->fail({});
    QCOMPARE(fixture.controller.state(), State::Paused);
    QVERIFY(!fixture.controller.press(Qt::Key_AudioForward, true));
    QVERIFY(!fixture.controller.release(Qt::Key_AudioForward));
    QCOMPARE(fixture.player->seeks.size(), 0);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
}

void PlayerControllerScrubTest::removingPlayerCancelsScrub()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 3s);
    const qsizetype calls = fixture.player->calls()->size();
    fixture.controller.setPlayer(nullptr);
    QVERIFY(!fixture.controller.release(Qt::Key_AudioForward));
    QCOMPARE(fixture.player->calls()->size(), calls);
}

void PlayerControllerScrubTest::noTimerRunsAfterScrub()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_AudioForward, 3s);
    fixture.controller.release(Qt::Key_AudioForward);
    fixture.clock.advance(4s);
    QCOMPARE(fixture.clock.pendingTimers(), 0);
}

QUILLMERE_TEST(PlayerControllerScrubTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerScrubTest.moc"
