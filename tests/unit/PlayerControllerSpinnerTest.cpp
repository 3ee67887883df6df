#include "PlayerControllerFixture.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

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
    PlayerControllerFixture fixture;
    fixture.player->setWaiting(true);
    fixture.clock.advance(499ms);
    fixture.player->setWaiting(true);
    QVERIFY(!fixture.controller.spinnerShown());
    fixture.clock.advance(1ms);
    QVERIFY(fixture.controller.spinnerShown());
    fixture.player->setWaiting(true);
    QCOMPARE(fixture.clock.pendingTimers(), 0);
}

void PlayerControllerSpinnerTest::spinnerHidesAtOnce()
{
    PlayerControllerFixture fixture;
    fixture.player->setWaiting(true);
    fixture.clock.advance(1s);
    fixture.player->setWaiting(false);
    QVERIFY(!fixture.controller.spinnerShown());
}

void PlayerControllerSpinnerTest::shortWaitShowsNoSpinner()
{
    PlayerControllerFixture fixture;
    for (int wait = 0; wait < 3; ++wait) {
        fixture.player->setWaiting(true);
        fixture.clock.advance(400ms);
        fixture.player->setWaiting(false);
    }
    fixture.clock.advance(1s);
    QVERIFY(!fixture.controller.spinnerShown());
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
    PlayerControllerFixture fixture;
    fixture.player->fail({});
    fixture.player->setWaiting(true);
    fixture.clock.advance(1s);
    QVERIFY(!fixture.controller.spinnerShown());
}

QUILLMERE_TEST(PlayerControllerSpinnerTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerSpinnerTest.moc"
