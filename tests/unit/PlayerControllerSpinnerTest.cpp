#include "PlayerOnScript.h"

#include <QTest>

using namespace std::chrono_literals;

/** The sign of waiting: there for a wait that is felt, and no longer than that. */
class PlayerControllerSpinnerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSpinnerComesAfterHalfASecond();
    void theSpinnerGoesAtOnce();
    void aShortWaitShowsNoSpinner();
    void theSpinnerShowsWhileTheFirstPictureLoads();
    void afterAFailureNothingIsWaitedFor();
};

void PlayerControllerSpinnerTest::theSpinnerComesAfterHalfASecond()
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

void PlayerControllerSpinnerTest::theSpinnerGoesAtOnce()
{
    PlayerOnScript script;
    script.player->setWaiting(true);
    script.clock.advance(1s);
    script.player->setWaiting(false);
    QVERIFY(!script.controller.spinnerShown());
}

void PlayerControllerSpinnerTest::aShortWaitShowsNoSpinner()
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

void PlayerControllerSpinnerTest::theSpinnerShowsWhileTheFirstPictureLoads()
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

void PlayerControllerSpinnerTest::afterAFailureNothingIsWaitedFor()
{
    PlayerOnScript script;
    script.player->fail({});
    script.player->setWaiting(true);
    script.clock.advance(1s);
    QVERIFY(!script.controller.spinnerShown());
}

QTEST_GUILESS_MAIN(PlayerControllerSpinnerTest)
#include "PlayerControllerSpinnerTest.moc"
