#include "PlayerControllerFixture.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace quillmere {

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
    PlayerControllerFixture fixture;
    QVERIFY(!fixture.controller.transportShown());
    const QSignalSpy changes(&fixture.controller, &PlayerController::transportShownChanged);
    fixture.controller.press(key);
    QVERIFY(fixture.controller.transportShown());
    QCOMPARE(changes.count(), 1);
}

void PlayerControllerTransportTest::barHidesFourSecondsAfterLastKey()
{
    PlayerControllerFixture fixture;
    fixture.controller.press(Qt::Key_Right);
    fixture.clock.advance(3s);
    fixture.controller.press(Qt::Key_Up);
    fixture.clock.advance(3999ms);
    QVERIFY(fixture.controller.transportShown());
    fixture.clock.advance(1ms);
    QVERIFY(!fixture.controller.transportShown());
}

void PlayerControllerTransportTest::arrowReleaseDoesNotExtendBar()
{
    PlayerControllerFixture fixture;
    fixture.controller.press(Qt::Key_Right);
    fixture.clock.advance(300ms);
    fixture.controller.release(Qt::Key_Right);
    fixture.clock.advance(3700ms);
    QVERIFY(!fixture.controller.transportShown());
    fixture.controller.release(Qt::Key_Right);
    QVERIFY(!fixture.controller.transportShown());
}

void PlayerControllerTransportTest::barStaysWhilePaused()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_MediaPause);
    fixture.clock.advance(1h);
    QVERIFY(fixture.controller.transportShown());
    fixture.tap(Qt::Key_MediaPlay);
    QVERIFY(fixture.controller.transportShown());
    fixture.clock.advance(4s);
    QVERIFY(!fixture.controller.transportShown());
}

void PlayerControllerTransportTest::pauseWithoutKeyShowsBar()
{
    PlayerControllerFixture fixture;
    fixture.player->pause();
    QVERIFY(fixture.controller.transportShown());
    fixture.player->play();
    QVERIFY(!fixture.controller.transportShown());
}

void PlayerControllerTransportTest::endOfTapeShowsBar()
{
    PlayerControllerFixture fixture;
    fixture.player->moveTo(3600);
    fixture.player->end();
    QVERIFY(fixture.controller.transportShown());
    QCOMPARE(fixture.controller.state(), PlayerController::State::Paused);
    QCOMPARE(fixture.controller.remainingText(), u"-0:00"_s);
    QCOMPARE(fixture.controller.progress(), 1.0);
}

void PlayerControllerTransportTest::barStaysWhileScrubbing()
{
    PlayerControllerFixture fixture;
    fixture.controller.press(Qt::Key_AudioForward);
    fixture.clock.advance(20s);
    QVERIFY(fixture.controller.transportShown());
    fixture.controller.release(Qt::Key_AudioForward);
    fixture.clock.advance(3999ms);
    QVERIFY(fixture.controller.transportShown());
    fixture.clock.advance(1ms);
    QVERIFY(!fixture.controller.transportShown());
}

void PlayerControllerTransportTest::barStaysWhileWaiting()
{
    PlayerControllerFixture fixture;
    fixture.controller.press(Qt::Key_Right);
    fixture.player->setWaiting(true);
    fixture.clock.advance(20s);
    QVERIFY(fixture.controller.transportShown());
    fixture.player->setWaiting(false);
    QVERIFY(!fixture.controller.transportShown());
}

void PlayerControllerTransportTest::waitingDoesNotShowBar()
{
    PlayerControllerFixture fixture;
    fixture.player->setWaiting(true);
    QVERIFY(!fixture.controller.transportShown());
}

void PlayerControllerTransportTest::backClosesPanelThenHidesBarThenLeaves()
{
    PlayerControllerFixture fixture;
    const QSignalSpy dismissRequested(&fixture.controller, &PlayerController::dismissRequested);
    fixture.tap(Qt::Key_Down);
    QVERIFY(fixture.tap(Qt::Key_Back));
    QVERIFY(!fixture.controller.panelShown());
    QVERIFY(fixture.controller.transportShown());
    QVERIFY(fixture.tap(Qt::Key_Back));
    QVERIFY(!fixture.controller.transportShown());
    QCOMPARE(dismissRequested.count(), 0);
    QVERIFY(fixture.tap(Qt::Key_Back));
    QCOMPARE(dismissRequested.count(), 1);
}

void PlayerControllerTransportTest::backLeavesIfBarIsHidden()
{
    PlayerControllerFixture fixture;
    const QSignalSpy dismissRequested(&fixture.controller, &PlayerController::dismissRequested);
    fixture.tap(Qt::Key_Right);
    fixture.clock.advance(4s);
    fixture.tap(Qt::Key_Back);
    QCOMPARE(dismissRequested.count(), 1);
}

void PlayerControllerTransportTest::backLeavesWhilePaused()
{
    PlayerControllerFixture fixture;
    const QSignalSpy dismissRequested(&fixture.controller, &PlayerController::dismissRequested);
    fixture.tap(Qt::Key_Select);
    fixture.tap(Qt::Key_Back);
    QCOMPARE(dismissRequested.count(), 1);
}

void PlayerControllerTransportTest::backHidesBarWhileWaiting()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_Right);
    fixture.player->setWaiting(true);
    fixture.clock.advance(10s);
    fixture.tap(Qt::Key_Back);
    QVERIFY(!fixture.controller.transportShown());
    fixture.player->setWaiting(false);
    QVERIFY(!fixture.controller.transportShown());
}

void PlayerControllerTransportTest::backDoesNotShowBar()
{
    PlayerControllerFixture fixture;
    const QSignalSpy bar(&fixture.controller, &PlayerController::transportShownChanged);
    fixture.tap(Qt::Key_Back);
    QCOMPARE(bar.count(), 0);
}

void PlayerControllerTransportTest::failureHidesPanelBarAndSpinner()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_Down);
    fixture.player->setWaiting(true);
    fixture.clock.advance(1s);
    QVERIFY(fixture.controller.spinnerShown());
    fixture.player->fail({VideoFailure::Cause::Refused, 0, {}});
    QVERIFY(!fixture.controller.panelShown());
    QVERIFY(!fixture.controller.transportShown());
    QVERIFY(!fixture.controller.spinnerShown());

    const QSignalSpy dismissRequested(&fixture.controller, &PlayerController::dismissRequested);
    for (const int key : {Qt::Key_Select, Qt::Key_Left, Qt::Key_Up, Qt::Key_Down, Qt::Key_MediaPlay})
        QVERIFY(!fixture.tap(key));
    QVERIFY(!fixture.controller.transportShown());
    QVERIFY(fixture.tap(Qt::Key_Back));
    QCOMPARE(dismissRequested.count(), 1);
    QCOMPARE(fixture.clock.pendingTimers(), 0);
}

void PlayerControllerTransportTest::withoutPlayerNothingIsShown()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_Down);
    fixture.controller.setPlayer(nullptr);
    QVERIFY(!fixture.controller.panelShown());
    QVERIFY(!fixture.controller.transportShown());
    QCOMPARE(fixture.clock.pendingTimers(), 0);
}

QUILLMERE_TEST(PlayerControllerTransportTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerTransportTest.moc"
