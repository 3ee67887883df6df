#include "PlayerOnScript.h"

#include <QTest>

using namespace std::chrono_literals;
using TimeControl = VideoPlayer::TimeControl;

/** The keys that act at once: play and pause, and the skips. */
class PlayerControllerSkipTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void selectAndPlayPauseToggle_data();
    void selectAndPlayPauseToggle();
    void playPlaysAndPausePauses();
    void aPauseWhileItWaitsForDataIsOne();
    void stopLeavesAtOnce();
    void aSkipGoesSoFar_data();
    void aSkipGoesSoFar();
    void aSkipLandsAtOrAfterItsTarget();
    void quickSkipsAddUp();
    void aSkipAfterASeekThatCameToNothingCountsFromThePosition();
    void aSkipStaysOnTheRecording_data();
    void aSkipStaysOnTheRecording();
    void aSkipForwardNearTheEndDoesNotGoBack();
    void aPausedPlayerStaysPausedAfterASkip();
    void aHeldNextSkipsOnce();
    void withoutSeekingNothingIsSkipped_data();
    void withoutSeekingNothingIsSkipped();
    void aKeyThatMeansNothingIsLeft();
    void withoutAPlayerOnlyBackAndStopAreUsed();
};

void PlayerControllerSkipTest::selectAndPlayPauseToggle_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("select") << Qt::Key_Select;
    QTest::newRow("play/pause") << Qt::Key_MediaTogglePlayPause;
}

void PlayerControllerSkipTest::selectAndPlayPauseToggle()
{
    QFETCH(const Qt::Key, key);
    PlayerOnScript script;
    QVERIFY(script.tap(key));
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QVERIFY(script.tap(key));
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void PlayerControllerSkipTest::playPlaysAndPausePauses()
{
    PlayerOnScript script;
    QVERIFY(script.tap(Qt::Key_MediaPlay));
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QVERIFY(script.tap(Qt::Key_MediaPause));
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QVERIFY(script.tap(Qt::Key_MediaPause));
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QVERIFY(script.tap(Qt::Key_MediaPlay));
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void PlayerControllerSkipTest::aPauseWhileItWaitsForDataIsOne()
{
    PlayerOnScript script;
    script.player->setWaiting(true);
    script.tap(Qt::Key_Select);
    script.player->setWaiting(false);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
}

void PlayerControllerSkipTest::stopLeavesAtOnce()
{
    PlayerOnScript script;
    script.tap(Qt::Key_Down);
    const QSignalSpy leave(&script.controller, &PlayerController::leave);
    QVERIFY(script.tap(Qt::Key_MediaStop));
    QCOMPARE(leave.count(), 1);
}

void PlayerControllerSkipTest::aSkipGoesSoFar_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<double>("target");
    QTest::newRow("left") << Qt::Key_Left << 1490.0;
    QTest::newRow("right") << Qt::Key_Right << 1510.0;
    QTest::newRow("previous") << Qt::Key_MediaPrevious << 900.0;
    QTest::newRow("next") << Qt::Key_MediaNext << 2100.0;
}

void PlayerControllerSkipTest::aSkipGoesSoFar()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const double, target);
    PlayerOnScript script;
    script.player->moveTo(1500);
    QVERIFY(script.controller.press(key));
    QCOMPARE(script.player->targets(), QList<double>{target});
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    script.controller.release(key);
    QCOMPARE(script.player->seeks.size(), 1);
}

void PlayerControllerSkipTest::aSkipLandsAtOrAfterItsTarget()
{
    PlayerOnScript script;
    script.tap(Qt::Key_Left);
    QCOMPARE(script.player->seeks.first().tolerance, SeekTolerance::AtOrAfter);
}

void PlayerControllerSkipTest::quickSkipsAddUp()
{
    PlayerOnScript script;
    for (const int key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_MediaNext})
        script.tap(key);
    QCOMPARE(script.player->targets(), (QList<double>{610, 620, 630, 620, 1220}));
}

void PlayerControllerSkipTest::aSkipAfterASeekThatCameToNothingCountsFromThePosition()
{
    PlayerOnScript script;
    script.tap(Qt::Key_Right);
    script.player->moveTo(601);
    script.tap(Qt::Key_Right);
    QCOMPARE(script.player->targets(), (QList<double>{610, 611}));
}

void PlayerControllerSkipTest::aSkipStaysOnTheRecording_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<double>("target");
    QTest::newRow("back over the top") << 4.0 << Qt::Key_Left << 0.0;
    QTest::newRow("ten minutes over the top") << 599.0 << Qt::Key_MediaPrevious << 0.0;
    QTest::newRow("on over the end") << 3592.0 << Qt::Key_Right << 3597.0;
    QTest::newRow("ten minutes over the end") << 3300.0 << Qt::Key_MediaNext << 3597.0;
    QTest::newRow("back from the end") << 3600.0 << Qt::Key_Left << 3590.0;
    QTest::newRow("back from beyond the end") << 3800.0 << Qt::Key_Left << 3597.0;
}

void PlayerControllerSkipTest::aSkipStaysOnTheRecording()
{
    QFETCH(const double, position);
    QFETCH(const Qt::Key, key);
    QFETCH(const double, target);
    PlayerOnScript script;
    script.player->moveTo(position);
    script.tap(key);
    QCOMPARE(script.player->targets(), QList<double>{target});
}

void PlayerControllerSkipTest::aSkipForwardNearTheEndDoesNotGoBack()
{
    PlayerOnScript script;
    for (const double position : {3597.0, 3599.5, 3600.0, 3605.0}) {
        script.player->moveTo(position);
        QVERIFY(script.tap(Qt::Key_Right));
        QVERIFY(script.tap(Qt::Key_MediaNext));
    }
    script.player->setDuration(2); // shorter than what is always played
    script.player->moveTo(1);
    QVERIFY(script.tap(Qt::Key_Right));
    QCOMPARE(script.player->targets(), QList<double>());
}

void PlayerControllerSkipTest::aPausedPlayerStaysPausedAfterASkip()
{
    PlayerOnScript script;
    script.tap(Qt::Key_MediaPause);
    script.tap(Qt::Key_Right);
    script.player->finishSeek(true);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
}

void PlayerControllerSkipTest::aHeldNextSkipsOnce()
{
    PlayerOnScript script;
    script.hold(Qt::Key_MediaNext, 3s);
    script.controller.release(Qt::Key_MediaNext);
    QCOMPARE(script.player->targets(), QList<double>{1200});
}

void PlayerControllerSkipTest::withoutSeekingNothingIsSkipped_data()
{
    QTest::addColumn<PlayerItem::Kind>("kind");
    QTest::addColumn<bool>("isSeekable");
    QTest::addColumn<double>("duration");
    QTest::newRow("live") << PlayerItem::Kind::Live << false << 0.0;
    QTest::newRow("a recording that cannot be sought") << PlayerItem::Kind::Recording << false << 3600.0;
    QTest::newRow("no duration yet") << PlayerItem::Kind::Recording << true << 0.0;
}

void PlayerControllerSkipTest::withoutSeekingNothingIsSkipped()
{
    QFETCH(const PlayerItem::Kind, kind);
    QFETCH(const bool, isSeekable);
    QFETCH(const double, duration);
    PlayerOnScript script(kind);
    script.player->setSeekable(isSeekable);
    script.player->setDuration(duration);
    for (const int key :
         {Qt::Key_Left, Qt::Key_Right, Qt::Key_MediaNext, Qt::Key_MediaPrevious, Qt::Key_AudioForward}) {
        script.hold(key, 3s);
        script.controller.release(key);
    }
    QCOMPARE(script.player->targets(), QList<double>());
    QCOMPARE(script.player->position(), 600.0);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.controller.state(), PlayerController::State::Playing);
}

void PlayerControllerSkipTest::aKeyThatMeansNothingIsLeft()
{
    PlayerOnScript script;
    QVERIFY(!script.tap(Qt::Key_ChannelUp));
    QVERIFY(!script.controller.release(Qt::Key_Right));
}

void PlayerControllerSkipTest::withoutAPlayerOnlyBackAndStopAreUsed()
{
    ScriptedClock clock;
    PlayerController controller(clock);
    const QSignalSpy leave(&controller, &PlayerController::leave);
    for (const int key : {Qt::Key_Select, Qt::Key_Left, Qt::Key_Down, Qt::Key_AudioForward, Qt::Key_MediaPlay})
        QVERIFY(!controller.press(key));
    QCOMPARE(leave.count(), 0);
    QVERIFY(controller.press(Qt::Key_Back));
    QVERIFY(controller.press(Qt::Key_MediaStop));
    QCOMPARE(leave.count(), 2);
}

QTEST_GUILESS_MAIN(PlayerControllerSkipTest)
#include "PlayerControllerSkipTest.moc"
