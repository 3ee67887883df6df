#include "PlayerControllerFixture.h"
#include "TestMain.h"

using namespace std::chrono_literals;

namespace quillmere {

/** Tests the spinner: it is shown only for longer waits, and hides when the wait ends. */
class PlayerControllerSpinnerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture.emplace(); }

    void spinnerIsShownAfter500MillisecondsAndHidesAtOnce()
    {
        m_fixture->player->setWaiting(true);
        m_fixture->clock.advance(499ms);
        m_fixture->player->setWaiting(true);
        QVERIFY(!m_fixture->controller.spinnerShown());
        m_fixture->clock.advance(1ms);
        QVERIFY(m_fixture->controller.spinnerShown());
        m_fixture->player->setWaiting(true);
        QCOMPARE(m_fixture->clock.pendingTimers(), 0);
        m_fixture->player->setWaiting(false);
        QVERIFY(!m_fixture->controller.spinnerShown());
    }

    void shortWaitShowsNoSpinner()
    {
        for (int wait = 0; wait < 3; ++wait) {
            m_fixture->player->setWaiting(true);
            m_fixture->clock.advance(400ms);
            m_fixture->player->setWaiting(false);
        }
        m_fixture->clock.advance(1s);
        QVERIFY(!m_fixture->controller.spinnerShown());
    }

    void spinnerIsShownUntilFirstPicture()
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

    void spinnerIsNotShownAfterFailure()
    {
        m_fixture->player->fail({});
        m_fixture->player->setWaiting(true);
        m_fixture->clock.advance(1s);
        QVERIFY(!m_fixture->controller.spinnerShown());
    }

private:
    std::optional<PlayerControllerFixture> m_fixture;
};

QUILLMERE_TEST(PlayerControllerSpinnerTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerSpinnerTest.moc"
