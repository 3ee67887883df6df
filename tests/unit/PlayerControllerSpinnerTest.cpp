#include "PlayerOnScript.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;

/** Tests the spinner: it is shown only for longer waits, and hides when the wait ends. */
class PlayerControllerSpinnerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void spinnerIsShownAfter500Milliseconds();
    void spinnerHidesAtOnce();
    void shortWaitShowsNoSpinner();
    void spinnerIsShownUntilFirstPicture();
    void spinnerIsNotShownAfterFailure();
};

void PlayerControllerSpinnerTest::spinnerIsShownAfter500Milliseconds()
{
    PlayerOnScript script;
    script.player->setWaiting(true);
    script.clock.advance(499ms);
    script.player->setWaiting(true);
    QVERIFY(!script.controller.spinnerShown());
    script.clock.advance(1ms);
    QVERIFY(script.controller.spinnerShown());
    script.player->setWaiting(true);
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void PlayerControllerSpinnerTest::spinnerHidesAtOnce()
{
    PlayerOnScript script;
    script.player->setWaiting(true);
    script.clock.advance(1s);
    script.player->setWaiting(false);
    QVERIFY(!script.controller.spinnerShown());
}

void PlayerControllerSpinnerTest::shortWaitShowsNoSpinner()
{
    PlayerOnScript script;
    for (int wait = 0; wait < 3; ++wait) {
        script.player->setWaiting(true);
        script.clock.advance(400ms);
        script.player->setWaiting(false);
    }
    script.clock.advance(1s);
    QVERIFY(!script.controller.spinnerShown());
}

void PlayerControllerSpinnerTest::spinnerIsShownUntilFirstPicture()
{
    ScriptedClock clock;
    ScriptedVideoPlayer player;
    PlayerController controller(clock);
    controller.setPlayer(&player);
    player.setItem(std::make_shared<PlayerItem>(QUrl()));
    clock.advance(500ms);
    QVERIFY(controller.spinnerShown());
    player.showPicture();
    QVERIFY(!controller.spinnerShown());
}

void PlayerControllerSpinnerTest::spinnerIsNotShownAfterFailure()
{
    PlayerOnScript script;
    script.player->fail({});
    script.player->setWaiting(true);
    script.clock.advance(1s);
    QVERIFY(!script.controller.spinnerShown());
}

QUILLMERE_TEST(PlayerControllerSpinnerTest, QCoreApplication)
#include "PlayerControllerSpinnerTest.moc"
