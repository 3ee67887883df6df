#include "PlayerOnScript.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

/** When the transport bar comes over the picture, when it goes, and what back hides first. */
class PlayerControllerTransportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsShownWhileATapeStarts();
    void anyKeyShowsTheBar_data();
    void anyKeyShowsTheBar();
    void theBarHidesFourSecondsAfterTheLastKey();
    void theReleaseOfAnArrowIsNoKeyOfItsOwn();
    void theBarStaysWhilePaused();
    void aPauseFromElsewhereShowsTheBar();
    void theEndOfPlayShowsTheBar();
    void theBarStaysWhileScrubbing();
    void theBarStaysWhileWaiting();
    void waitingShowsNoBar();
    void backClosesThePanelThenHidesTheBarThenLeaves();
    void theFirstBackLeavesOnceTheBarHasHidden();
    void backLeavesFromPaused();
    void backHidesABarThatWaitingHolds();
    void backShowsNoBar();
    void aFailureClearsThePicture();
    void letGoNothingIsShown();
};

void PlayerControllerTransportTest::nothingIsShownWhileATapeStarts()
{
    ScriptedClock clock;
    ScriptedVideoPlayer player;
    PlayerController controller(clock);
    const QSignalSpy bar(&controller, &PlayerController::transportShownChanged);
    controller.setPlayer(&player);
    player.setItem(std::make_shared<PlayerItem>(QUrl()));
    player.seek(125, SeekTolerance::AtOrAfter);
    QCOMPARE(controller.state(), PlayerController::State::Waiting);
    player.showPicture(); // still paused: it plays once the seek is done
    QCOMPARE(controller.state(), PlayerController::State::Waiting);
    player.play();
    QCOMPARE(controller.state(), PlayerController::State::Playing);
    QCOMPARE(bar.count(), 0);
}

void PlayerControllerTransportTest::anyKeyShowsTheBar_data()
{
    QTest::addColumn<Qt::Key>("key");
    for (const Qt::Key key : {Qt::Key_Select, Qt::Key_Left, Qt::Key_Up, Qt::Key_Down, Qt::Key_MediaPlay,
                              Qt::Key_MediaNext, Qt::Key_AudioForward, Qt::Key_ChannelUp})
        QTest::newRow(qPrintable(QString::number(key, 16))) << key;
}

void PlayerControllerTransportTest::anyKeyShowsTheBar()
{
    QFETCH(const Qt::Key, key);
    PlayerOnScript script;
    QVERIFY(!script.controller.transportShown());
    const QSignalSpy changes(&script.controller, &PlayerController::transportShownChanged);
    script.controller.press(key);
    QVERIFY(script.controller.transportShown());
    QCOMPARE(changes.count(), 1);
}

void PlayerControllerTransportTest::theBarHidesFourSecondsAfterTheLastKey()
{
    PlayerOnScript script;
    script.controller.press(Qt::Key_Right);
    script.clock.advance(3s);
    script.controller.press(Qt::Key_Up);
    script.clock.advance(3999ms);
    QVERIFY(script.controller.transportShown());
    script.clock.advance(1ms);
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::theReleaseOfAnArrowIsNoKeyOfItsOwn()
{
    PlayerOnScript script;
    script.controller.press(Qt::Key_Right);
    script.clock.advance(300ms);
    script.controller.release(Qt::Key_Right);
    script.clock.advance(3700ms);
    QVERIFY(!script.controller.transportShown());
    script.controller.release(Qt::Key_Right);
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::theBarStaysWhilePaused()
{
    PlayerOnScript script;
    script.tap(Qt::Key_MediaPause);
    script.clock.advance(1h);
    QVERIFY(script.controller.transportShown());
    script.tap(Qt::Key_MediaPlay);
    QVERIFY(script.controller.transportShown());
    script.clock.advance(4s);
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::aPauseFromElsewhereShowsTheBar()
{
    PlayerOnScript script;
    script.player->pause();
    QVERIFY(script.controller.transportShown());
    script.player->play();
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::theEndOfPlayShowsTheBar()
{
    PlayerOnScript script;
    script.player->moveTo(3600);
    script.player->end();
    QVERIFY(script.controller.transportShown());
    QCOMPARE(script.controller.state(), PlayerController::State::Paused);
    QCOMPARE(script.controller.remainingText(), u"-0:00"_s);
    QCOMPARE(script.controller.progress(), 1.0);
}

void PlayerControllerTransportTest::theBarStaysWhileScrubbing()
{
    PlayerOnScript script;
    script.controller.press(Qt::Key_AudioForward);
    script.clock.advance(20s);
    QVERIFY(script.controller.transportShown());
    script.controller.release(Qt::Key_AudioForward);
    script.clock.advance(3999ms);
    QVERIFY(script.controller.transportShown());
    script.clock.advance(1ms);
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::theBarStaysWhileWaiting()
{
    PlayerOnScript script;
    script.controller.press(Qt::Key_Right);
    script.player->setWaiting(true);
    script.clock.advance(20s);
    QVERIFY(script.controller.transportShown());
    script.player->setWaiting(false);
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::waitingShowsNoBar()
{
    PlayerOnScript script;
    script.player->setWaiting(true);
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::backClosesThePanelThenHidesTheBarThenLeaves()
{
    PlayerOnScript script;
    const QSignalSpy leave(&script.controller, &PlayerController::leave);
    script.tap(Qt::Key_Down);
    QVERIFY(script.tap(Qt::Key_Back));
    QVERIFY(!script.controller.panelShown());
    QVERIFY(script.controller.transportShown());
    QVERIFY(script.tap(Qt::Key_Back));
    QVERIFY(!script.controller.transportShown());
    QCOMPARE(leave.count(), 0);
    QVERIFY(script.tap(Qt::Key_Back));
    QCOMPARE(leave.count(), 1);
}

void PlayerControllerTransportTest::theFirstBackLeavesOnceTheBarHasHidden()
{
    PlayerOnScript script;
    const QSignalSpy leave(&script.controller, &PlayerController::leave);
    script.tap(Qt::Key_Right);
    script.clock.advance(4s);
    script.tap(Qt::Key_Back);
    QCOMPARE(leave.count(), 1);
}

void PlayerControllerTransportTest::backLeavesFromPaused()
{
    PlayerOnScript script;
    const QSignalSpy leave(&script.controller, &PlayerController::leave);
    script.tap(Qt::Key_Select);
    script.tap(Qt::Key_Back);
    QCOMPARE(leave.count(), 1);
}

void PlayerControllerTransportTest::backHidesABarThatWaitingHolds()
{
    PlayerOnScript script;
    script.tap(Qt::Key_Right);
    script.player->setWaiting(true);
    script.clock.advance(10s);
    script.tap(Qt::Key_Back);
    QVERIFY(!script.controller.transportShown());
    script.player->setWaiting(false);
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::backShowsNoBar()
{
    PlayerOnScript script;
    const QSignalSpy bar(&script.controller, &PlayerController::transportShownChanged);
    script.tap(Qt::Key_Back);
    QCOMPARE(bar.count(), 0);
}

void PlayerControllerTransportTest::aFailureClearsThePicture()
{
    PlayerOnScript script;
    script.tap(Qt::Key_Down);
    script.player->setWaiting(true);
    script.clock.advance(1s);
    QVERIFY(script.controller.spinnerShown());
    script.player->fail({VideoFailure::Cause::Refused, 0, {}});
    QVERIFY(!script.controller.panelShown());
    QVERIFY(!script.controller.transportShown());
    QVERIFY(!script.controller.spinnerShown());

    const QSignalSpy leave(&script.controller, &PlayerController::leave);
    for (const int key : {Qt::Key_Select, Qt::Key_Left, Qt::Key_Up, Qt::Key_Down, Qt::Key_MediaPlay})
        QVERIFY(!script.tap(key));
    QVERIFY(!script.controller.transportShown());
    QVERIFY(script.tap(Qt::Key_Back));
    QCOMPARE(leave.count(), 1);
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void PlayerControllerTransportTest::letGoNothingIsShown()
{
    PlayerOnScript script;
    script.tap(Qt::Key_Down);
    script.controller.setPlayer(nullptr);
    QVERIFY(!script.controller.panelShown());
    QVERIFY(!script.controller.transportShown());
    QCOMPARE(script.clock.pendingTimers(), 0);
}

QTEST_GUILESS_MAIN(PlayerControllerTransportTest)
#include "PlayerControllerTransportTest.moc"
