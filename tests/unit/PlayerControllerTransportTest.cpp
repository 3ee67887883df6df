#include "PlayerOnScript.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

/** Tests when the transport bar is shown and hidden, and what Back hides first. */
class PlayerControllerTransportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsShownWhileTapeStarts();
    void anyKeyShowsBar_data();
    void anyKeyShowsBar();
    void barHidesFourSecondsAfterLastKey();
    void arrowReleaseDoesNotExtendBar();
    void barStaysWhilePaused();
    void pauseWithoutKeyShowsBar();
    void endOfTapeShowsBar();
    void barStaysWhileScrubbing();
    void barStaysWhileWaiting();
    void waitingDoesNotShowBar();
    void backClosesPanelThenHidesBarThenLeaves();
    void backLeavesIfBarIsHidden();
    void backLeavesWhilePaused();
    void backHidesBarWhileWaiting();
    void backDoesNotShowBar();
    void failureHidesPanelBarAndSpinner();
    void withoutPlayerNothingIsShown();
};

void PlayerControllerTransportTest::nothingIsShownWhileTapeStarts()
{
    ScriptedClock clock;
    ScriptedVideoPlayer player;
    PlayerController controller(clock);
    const QSignalSpy bar(&controller, &PlayerController::transportShownChanged);
    controller.setPlayer(&player);
    player.setItem(std::make_shared<PlayerItem>(QUrl()));
    player.seek(125, SeekTolerance::AtOrAfter);
    QCOMPARE(controller.state(), PlayerController::State::Waiting);
    player.showPicture(); // still paused; playback starts when the seek has finished
    QCOMPARE(controller.state(), PlayerController::State::Waiting);
    player.play();
    QCOMPARE(controller.state(), PlayerController::State::Playing);
    QCOMPARE(bar.count(), 0);
}

void PlayerControllerTransportTest::anyKeyShowsBar_data()
{
    QTest::addColumn<Qt::Key>("key");
    for (const Qt::Key key : {Qt::Key_Select, Qt::Key_Left, Qt::Key_Up, Qt::Key_Down, Qt::Key_MediaPlay,
                              Qt::Key_MediaNext, Qt::Key_AudioForward, Qt::Key_ChannelUp})
        QTest::newRow(qPrintable(QString::number(key, 16))) << key;
}

void PlayerControllerTransportTest::anyKeyShowsBar()
{
    QFETCH(const Qt::Key, key);
    PlayerOnScript script;
    QVERIFY(!script.controller.transportShown());
    const QSignalSpy changes(&script.controller, &PlayerController::transportShownChanged);
    script.controller.press(key);
    QVERIFY(script.controller.transportShown());
    QCOMPARE(changes.count(), 1);
}

void PlayerControllerTransportTest::barHidesFourSecondsAfterLastKey()
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

void PlayerControllerTransportTest::arrowReleaseDoesNotExtendBar()
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

void PlayerControllerTransportTest::barStaysWhilePaused()
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

void PlayerControllerTransportTest::pauseWithoutKeyShowsBar()
{
    PlayerOnScript script;
    script.player->pause();
    QVERIFY(script.controller.transportShown());
    script.player->play();
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::endOfTapeShowsBar()
{
    PlayerOnScript script;
    script.player->moveTo(3600);
    script.player->end();
    QVERIFY(script.controller.transportShown());
    QCOMPARE(script.controller.state(), PlayerController::State::Paused);
    QCOMPARE(script.controller.remainingText(), u"-0:00"_s);
    QCOMPARE(script.controller.progress(), 1.0);
}

void PlayerControllerTransportTest::barStaysWhileScrubbing()
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

void PlayerControllerTransportTest::barStaysWhileWaiting()
{
    PlayerOnScript script;
    script.controller.press(Qt::Key_Right);
    script.player->setWaiting(true);
    script.clock.advance(20s);
    QVERIFY(script.controller.transportShown());
    script.player->setWaiting(false);
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::waitingDoesNotShowBar()
{
    PlayerOnScript script;
    script.player->setWaiting(true);
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerTransportTest::backClosesPanelThenHidesBarThenLeaves()
{
    PlayerOnScript script;
    const QSignalSpy dismissRequested(&script.controller, &PlayerController::dismissRequested);
    script.tap(Qt::Key_Down);
    QVERIFY(script.tap(Qt::Key_Back));
    QVERIFY(!script.controller.panelShown());
    QVERIFY(script.controller.transportShown());
    QVERIFY(script.tap(Qt::Key_Back));
    QVERIFY(!script.controller.transportShown());
    QCOMPARE(dismissRequested.count(), 0);
    QVERIFY(script.tap(Qt::Key_Back));
    QCOMPARE(dismissRequested.count(), 1);
}

void PlayerControllerTransportTest::backLeavesIfBarIsHidden()
{
    PlayerOnScript script;
    const QSignalSpy dismissRequested(&script.controller, &PlayerController::dismissRequested);
    script.tap(Qt::Key_Right);
    script.clock.advance(4s);
    script.tap(Qt::Key_Back);
    QCOMPARE(dismissRequested.count(), 1);
}

void PlayerControllerTransportTest::backLeavesWhilePaused()
{
    PlayerOnScript script;
    const QSignalSpy dismissRequested(&script.controller, &PlayerController::dismissRequested);
    script.tap(Qt::Key_Select);
    script.tap(Qt::Key_Back);
    QCOMPARE(dismissRequested.count(), 1);
}

void PlayerControllerTransportTest::backHidesBarWhileWaiting()
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

void PlayerControllerTransportTest::backDoesNotShowBar()
{
    PlayerOnScript script;
    const QSignalSpy bar(&script.controller, &PlayerController::transportShownChanged);
    script.tap(Qt::Key_Back);
    QCOMPARE(bar.count(), 0);
}

void PlayerControllerTransportTest::failureHidesPanelBarAndSpinner()
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

    const QSignalSpy dismissRequested(&script.controller, &PlayerController::dismissRequested);
    for (const int key : {Qt::Key_Select, Qt::Key_Left, Qt::Key_Up, Qt::Key_Down, Qt::Key_MediaPlay})
        QVERIFY(!script.tap(key));
    QVERIFY(!script.controller.transportShown());
    QVERIFY(script.tap(Qt::Key_Back));
    QCOMPARE(dismissRequested.count(), 1);
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void PlayerControllerTransportTest::withoutPlayerNothingIsShown()
{
    PlayerOnScript script;
    script.tap(Qt::Key_Down);
    script.controller.setPlayer(nullptr);
    QVERIFY(!script.controller.panelShown());
    QVERIFY(!script.controller.transportShown());
    QCOMPARE(script.clock.pendingTimers(), 0);
}

QUILLMERE_TEST(PlayerControllerTransportTest, QCoreApplication)
#include "PlayerControllerTransportTest.moc"
