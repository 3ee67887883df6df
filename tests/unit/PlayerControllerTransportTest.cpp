#include "PlayerControllerFixture.h"
#include "TestMain.h"

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests when the transport bar is shown and hidden, and what Back hides first. */
class PlayerControllerTransportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture.emplace(); }

    void nothingIsShownWhileTapeStarts()
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

    void anyKeyShowsBar_data()
    {
        QTest::addColumn<Qt::Key>("key");
        for (const Qt::Key key : {Qt::Key_Select, Qt::Key_Left, Qt::Key_Up, Qt::Key_Down, Qt::Key_MediaPlay,
                                  Qt::Key_MediaNext, Qt::Key_AudioForward, Qt::Key_ChannelUp})
            QTest::newRow(qPrintable(QString::number(key, 16))) << key;
    }

    void anyKeyShowsBar()
    {
        QFETCH(const Qt::Key, key);
        QVERIFY(!m_fixture->controller.transportShown());
        const QSignalSpy changes(&m_fixture->controller, &PlayerController::transportShownChanged);
        m_fixture->controller.press(key);
        QVERIFY(m_fixture->controller.transportShown());
        QCOMPARE(changes.count(), 1);
    }

    void barHidesFourSecondsAfterLastPress()
    {
        m_fixture->controller.press(Qt::Key_Up);
        m_fixture->clock.advance(3s);
        m_fixture->controller.press(Qt::Key_Right);
        m_fixture->clock.advance(300ms);
        m_fixture->controller.release(Qt::Key_Right);
        m_fixture->clock.advance(3699ms);
        QVERIFY(m_fixture->controller.transportShown());
        m_fixture->clock.advance(1ms);
        QVERIFY(!m_fixture->controller.transportShown());
        m_fixture->controller.release(Qt::Key_Right);
        QVERIFY(!m_fixture->controller.transportShown());
    }

    void barStaysWhilePaused()
    {
        m_fixture->tap(Qt::Key_MediaPause);
        m_fixture->clock.advance(1h);
        QVERIFY(m_fixture->controller.transportShown());
        m_fixture->tap(Qt::Key_MediaPlay);
        QVERIFY(m_fixture->controller.transportShown());
        m_fixture->clock.advance(4s);
        QVERIFY(!m_fixture->controller.transportShown());
    }

    void pauseWithoutKeyShowsBarButWaitingDoesNot()
    {
        m_fixture->player->setWaiting(true);
        QVERIFY(!m_fixture->controller.transportShown());
        m_fixture->player->setWaiting(false);
        m_fixture->player->pause();
        QVERIFY(m_fixture->controller.transportShown());
        m_fixture->player->play();
        QVERIFY(!m_fixture->controller.transportShown());
    }

    void endOfTapeShowsBar()
    {
        m_fixture->player->moveTo(3600);
        m_fixture->player->end();
        QVERIFY(m_fixture->controller.transportShown());
        QCOMPARE(m_fixture->controller.state(), PlayerController::State::Paused);
        QCOMPARE(m_fixture->controller.remainingText(), u"-0:00"_s);
        QCOMPARE(m_fixture->controller.progress(), 1.0);
    }

    void barStaysWhileScrubbing()
    {
        m_fixture->controller.press(Qt::Key_AudioForward);
        m_fixture->clock.advance(20s);
        QVERIFY(m_fixture->controller.transportShown());
        m_fixture->controller.release(Qt::Key_AudioForward);
        m_fixture->clock.advance(3999ms);
        QVERIFY(m_fixture->controller.transportShown());
        m_fixture->clock.advance(1ms);
        QVERIFY(!m_fixture->controller.transportShown());
    }

    void barStaysWhileWaiting()
    {
        m_fixture->controller.press(Qt::Key_Right);
        m_fixture->player->setWaiting(true);
        m_fixture->clock.advance(20s);
        QVERIFY(m_fixture->controller.transportShown());
        m_fixture->player->setWaiting(false);
        QVERIFY(!m_fixture->controller.transportShown());
    }

    void backClosesPanelThenHidesBarThenLeaves()
    {
        m_fixture->tap(Qt::Key_Down);
        QVERIFY(m_fixture->tap(Qt::Key_Back));
        QVERIFY(!m_fixture->controller.panelShown());
        QVERIFY(m_fixture->controller.transportShown());
        QVERIFY(m_fixture->tap(Qt::Key_Back));
        QVERIFY(!m_fixture->controller.transportShown());
        QCOMPARE(m_fixture->dismissRequested.count(), 0);
        const QSignalSpy bar(&m_fixture->controller, &PlayerController::transportShownChanged);
        QVERIFY(m_fixture->tap(Qt::Key_Back));
        QCOMPARE(m_fixture->dismissRequested.count(), 1);
        QCOMPARE(bar.count(), 0);
    }

    void backLeavesWhilePaused()
    {
        m_fixture->tap(Qt::Key_Select);
        m_fixture->tap(Qt::Key_Back);
        QCOMPARE(m_fixture->dismissRequested.count(), 1);
    }

    void backHidesBarWhileWaiting()
    {
        m_fixture->tap(Qt::Key_Right);
        m_fixture->player->setWaiting(true);
        m_fixture->clock.advance(10s);
        m_fixture->tap(Qt::Key_Back);
        QVERIFY(!m_fixture->controller.transportShown());
        m_fixture->player->setWaiting(false);
        QVERIFY(!m_fixture->controller.transportShown());
    }

    void failureHidesPanelBarAndSpinner()
    {
        m_fixture->tap(Qt::Key_Down);
        m_fixture->player->setWaiting(true);
        m_fixture->clock.advance(1s);
        QVERIFY(m_fixture->controller.spinnerShown());
        m_fixture->player->fail({VideoFailure::Cause::Refused, 0, {}});
        QVERIFY(!m_fixture->controller.panelShown());
        QVERIFY(!m_fixture->controller.transportShown());
        QVERIFY(!m_fixture->controller.spinnerShown());

        for (const int key : {Qt::Key_Select, Qt::Key_Left, Qt::Key_Up, Qt::Key_Down, Qt::Key_MediaPlay})
            QVERIFY(!m_fixture->tap(key));
        QVERIFY(!m_fixture->controller.transportShown());
        QVERIFY(m_fixture->tap(Qt::Key_Back));
        QCOMPARE(m_fixture->dismissRequested.count(), 1);
        QCOMPARE(m_fixture->clock.pendingTimers(), 0);
    }

    void withoutPlayerNothingIsShown()
    {
        m_fixture->tap(Qt::Key_Down);
        m_fixture->controller.setPlayer(nullptr);
        QVERIFY(!m_fixture->controller.panelShown());
        QVERIFY(!m_fixture->controller.transportShown());
        QCOMPARE(m_fixture->clock.pendingTimers(), 0);
    }

private:
    std::optional<PlayerControllerFixture> m_fixture;
};

QUILLMERE_TEST(PlayerControllerTransportTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerTransportTest.moc"
