#include "PlayerControllerFixture.h"
#include "Rows.h"
#include "TestMain.h"

using namespace std::chrono_literals;

namespace quillmere {

using TimeControl = VideoPlayer::TimeControl;

/** Tests the keys that act at once: play, pause and the skip keys. */
class PlayerControllerSkipTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture.emplace(); }

    void keyPlaysOrPauses_data()
    {
        using enum VideoPlayer::TimeControl;
        rows<Qt::Key, TimeControl, TimeControl>({"key", "fromPlaying", "fromPaused"},
                                                {{"select", Qt::Key_Select, Paused, Playing},
                                                 {"play/pause", Qt::Key_MediaTogglePlayPause, Paused, Playing},
                                                 {"play", Qt::Key_MediaPlay, Playing, Playing},
                                                 {"pause", Qt::Key_MediaPause, Paused, Paused}});
    }

    void keyPlaysOrPauses()
    {
        QFETCH(const Qt::Key, key);
        QVERIFY(m_fixture->tap(key));
        QTEST(m_fixture->player->timeControl(), "fromPlaying");
        m_fixture->player->pause();
        QVERIFY(m_fixture->tap(key));
        QTEST(m_fixture->player->timeControl(), "fromPaused");
    }

    void pauseWhileWaitingForDataIsKept()
    {
        m_fixture->player->setWaiting(true);
        m_fixture->tap(Qt::Key_Select);
        m_fixture->player->setWaiting(false);
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::Paused);
    }

    void stopLeavesPlayerAtOnce()
    {
        m_fixture->tap(Qt::Key_Down);
        QVERIFY(m_fixture->tap(Qt::Key_MediaStop));
        QCOMPARE(m_fixture->dismissRequested.count(), 1);
    }

    void skipHasExpectedDistanceWithinRecording_data()
    {
        using enum Qt::Key;
        rows<Qt::Key, double, double>({"key", "position", "target"},
                                      {{"left", Key_Left, 1500, 1490},
                                       {"right", Key_Right, 1500, 1510},
                                       {"previous", Key_MediaPrevious, 1500, 900},
                                       {"next", Key_MediaNext, 1500, 2100},
                                       {"back beyond the start", Key_Left, 4, 0},
                                       {"ten minutes back beyond the start", Key_MediaPrevious, 599, 0},
                                       {"forward beyond the end", Key_Right, 3592, 3597},
                                       {"ten minutes forward beyond the end", Key_MediaNext, 3300, 3597},
                                       {"back from the end", Key_Left, 3600, 3590},
                                       {"back from beyond the end", Key_Left, 3800, 3597}});
    }

    void skipHasExpectedDistanceWithinRecording()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const double, position);
        QFETCH(const double, target);
        m_fixture->player->moveTo(position);
        QVERIFY(m_fixture->controller.press(key));
        QCOMPARE(m_fixture->targets(), QList<double>{target});
        QCOMPARE(m_fixture->player->seeks.first().tolerance, SeekTolerance::AtOrAfter);
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::Playing);
        m_fixture->controller.release(key);
        QCOMPARE(m_fixture->player->seeks.size(), 1);
    }

    void quickSkipsAddUp()
    {
        for (const int key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_MediaNext})
            m_fixture->tap(key);
        QCOMPARE(m_fixture->targets(), (QList<double>{610, 620, 630, 620, 1220}));
    }

    void skipAfterFailedSeekStartsFromPosition()
    {
        m_fixture->tap(Qt::Key_Right);
        m_fixture->player->moveTo(601);
        m_fixture->tap(Qt::Key_Right);
        QCOMPARE(m_fixture->targets(), (QList<double>{610, 611}));
    }

    void skipForwardNearEndDoesNotGoBack()
    {
        for (const double position : {3597.0, 3599.5, 3600.0, 3605.0}) {
            m_fixture->player->moveTo(position);
            QVERIFY(m_fixture->tap(Qt::Key_Right));
            QVERIFY(m_fixture->tap(Qt::Key_MediaNext));
        }
        m_fixture->player->setDuration(2); // shorter than the last part of a recording, which is always played
        m_fixture->player->moveTo(1);
        QVERIFY(m_fixture->tap(Qt::Key_Right));
        QCOMPARE(m_fixture->targets(), QList<double>());
    }

    void pausedPlayerStaysPausedAfterSkip()
    {
        m_fixture->tap(Qt::Key_MediaPause);
        m_fixture->tap(Qt::Key_Right);
        m_fixture->player->finishSeek(true);
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::Paused);
    }

    void heldNextSkipsOnce()
    {
        m_fixture->holdAndRelease(Qt::Key_MediaNext, 3s);
        QCOMPARE(m_fixture->targets(), QList<double>{1200});
    }

    void streamThatIsNotSeekableDoesNotSkip_data()
    {
        using enum PlayerItem::Kind;
        rows<PlayerItem::Kind, bool, double>({"kind", "isSeekable", "duration"},
                                             {{"live", Live, false, 0},
                                              {"a recording that is not seekable", Recording, false, 3600},
                                              {"no duration yet", Recording, true, 0}});
    }

    void streamThatIsNotSeekableDoesNotSkip()
    {
        QFETCH(const PlayerItem::Kind, kind);
        QFETCH(const bool, isSeekable);
        QFETCH(const double, duration);
        m_fixture.emplace(kind);
        m_fixture->player->setSeekable(isSeekable);
        m_fixture->player->setDuration(duration);
        for (const int key :
             {Qt::Key_Left, Qt::Key_Right, Qt::Key_MediaNext, Qt::Key_MediaPrevious, Qt::Key_AudioForward})
            m_fixture->holdAndRelease(key, 3s);
        QCOMPARE(m_fixture->targets(), QList<double>());
        QCOMPARE(m_fixture->player->position(), 600.0);
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::Playing);
        QCOMPARE(m_fixture->controller.state(), PlayerController::State::Playing);
    }

    void unusedKeyIsNotHandled()
    {
        QVERIFY(!m_fixture->tap(Qt::Key_ChannelUp));
        QVERIFY(!m_fixture->controller.release(Qt::Key_Right));
    }

    void withoutPlayerOnlyBackAndStopAreHandled()
    {
        ScriptedClock clock;
        PlayerController controller(clock);
        const QSignalSpy dismissRequested(&controller, &PlayerController::dismissRequested);
        for (const int key : {Qt::Key_Select, Qt::Key_Left, Qt::Key_Down, Qt::Key_AudioForward, Qt::Key_MediaPlay})
            QVERIFY(!controller.press(key));
        QCOMPARE(dismissRequested.count(), 0);
        QVERIFY(controller.press(Qt::Key_Back));
        QVERIFY(controller.press(Qt::Key_MediaStop));
        QCOMPARE(dismissRequested.count(), 2);
    }

private:
    std::optional<PlayerControllerFixture> m_fixture;
};

QUILLMERE_TEST(PlayerControllerSkipTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerSkipTest.moc"
