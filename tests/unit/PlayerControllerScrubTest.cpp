#include "PlayerControllerFixture.h"
#include "Rows.h"
#include "TestMain.h"

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace quillmere {

using std::chrono::milliseconds;
using State = PlayerController::State;
using TimeControl = VideoPlayer::TimeControl;

/** Tests scrubbing with held buttons: how far it moves, and what ends it. */
class PlayerControllerScrubTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture.emplace(); }

    void scrubIsFasterWhenHeldLonger_data()
    {
        rows<milliseconds, double, int>({"held", "distance", "speed"}, {{"start", 0ms, 0, 8},
                                                                        {"one update", 40ms, 0.32, 8},
                                                                        {"one second", 1s, 8, 8},
                                                                        {"just before two seconds", 1999ms, 15.992, 8},
                                                                        {"two seconds", 2s, 16, 16},
                                                                        {"three seconds", 3s, 32, 16},
                                                                        {"four seconds", 4s, 48, 32},
                                                                        {"six seconds", 6s, 112, 64},
                                                                        {"eight seconds", 8s, 240, 128},
                                                                        {"maximum speed", 18s, 1520, 128}});
    }

    void scrubIsFasterWhenHeldLonger()
    {
        QFETCH(const milliseconds, held);
        QFETCH(const double, distance);
        QFETCH(const int, speed);
        const Scrub forward{1000, 1, 5s, true};
        QCOMPARE(forward.positionAt(5s + held), 1000 + distance);
        QCOMPARE(forward.speedAt(5s + held), speed);
        const Scrub backward{2000, -1, 5s, true};
        QCOMPARE(backward.positionAt(5s + held), 2000 - distance);
        QCOMPARE(backward.speedAt(5s + held), -speed);
    }

    void heldArrowSkipsThenScrubsAndOtherKeysScrubFromPress_data()
    {
        rows<Qt::Key, milliseconds, QList<double>>({"key", "held", "targets"},
                                                   {{"right", Qt::Key_Right, 400ms + 3s, {610, 642}},
                                                    {"left", Qt::Key_Left, 400ms + 3s, {590, 558}},
                                                    {"fast forward", Qt::Key_AudioForward, 3s, {632}},
                                                    {"rewind", Qt::Key_AudioRewind, 1s, {592}}});
    }

    void heldArrowSkipsThenScrubsAndOtherKeysScrubFromPress()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const milliseconds, held);
        QVERIFY(m_fixture->holdAndRelease(key, held));
        QTEST(m_fixture->targets(), "targets");
        QCOMPARE(m_fixture->player->seeks.last().tolerance, SeekTolerance::AtOrAfter);
    }

    void stateShowsDirectionAndSpeed()
    {
        m_fixture->controller.press(Qt::Key_AudioForward);
        QCOMPARE(m_fixture->controller.state(), State::FastForwarding);
        QCOMPARE(m_fixture->controller.stateText(), u"Fast forward 8×"_s);
        const QSignalSpy changes(&m_fixture->controller, &PlayerController::stateChanged);
        m_fixture->clock.advance(2s);
        QCOMPARE(m_fixture->controller.stateText(), u"Fast forward 16×"_s);
        QCOMPARE(changes.count(), 1);
        QVERIFY(m_fixture->controller.isScrubbing());
        m_fixture->controller.release(Qt::Key_AudioForward);
        QCOMPARE(m_fixture->controller.state(), State::Playing);
        QVERIFY(!m_fixture->controller.isScrubbing());
        m_fixture->controller.press(Qt::Key_AudioRewind);
        QCOMPARE(m_fixture->controller.state(), State::Rewinding);
        QCOMPARE(m_fixture->controller.stateText(), u"Rewind 8×"_s);
        QVERIFY(m_fixture->controller.isScrubbing());
    }

    void scrubMovesPositionBetweenKeyRepeatsWhilePictureIsPaused()
    {
        m_fixture->controller.press(Qt::Key_AudioForward);
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::Paused);
        QCOMPARE(m_fixture->controller.elapsedText(), u"10:00"_s);
        const QSignalSpy moves(&m_fixture->controller, &PlayerController::timesChanged);
        m_fixture->clock.advance(1s);
        QCOMPARE(moves.count(), 8);
        m_fixture->clock.advance(3s);
        QCOMPARE(m_fixture->controller.elapsedText(), u"10:48"_s);
        QCOMPARE(m_fixture->controller.remainingText(), u"-49:12"_s);
        QCOMPARE(m_fixture->controller.progress(), 737.0 / 4096);
        QCOMPARE(m_fixture->player->seeks.size(), 0);
    }

    void playbackContinuesWhereScrubEndsDespiteReportedPosition()
    {
        m_fixture->hold(Qt::Key_AudioForward, 3s);
        m_fixture->player->moveTo(590);
        QCOMPARE(m_fixture->controller.elapsedText(), u"10:32"_s);
        QVERIFY(!m_fixture->controller.release(Qt::Key_Right));
        QCOMPARE(m_fixture->controller.state(), State::FastForwarding);
        QCOMPARE(m_fixture->player->seeks.size(), 0);
        const QSignalSpy changes(&m_fixture->controller, &PlayerController::stateChanged);
        m_fixture->controller.release(Qt::Key_AudioForward);
        QCOMPARE(m_fixture->targets(), QList<double>{632});
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::Playing);
        QCOMPARE(m_fixture->controller.elapsedText(), u"10:32"_s);
        QCOMPARE(m_fixture->player->calls()->last(2), (QStringList{u"seek"_s, u"play"_s}));
        QCOMPARE(changes.count(), 1); // directly from fast forward to playing
        m_fixture->clock.advance(4s);
        QCOMPARE(m_fixture->clock.pendingTimers(), 0);
    }

    void pausedPlayerStaysPausedAfterScrub()
    {
        m_fixture->tap(Qt::Key_MediaPause);
        m_fixture->holdAndRelease(Qt::Key_AudioForward, 3s);
        QCOMPARE(m_fixture->targets(), QList<double>{632});
        QCOMPARE(m_fixture->controller.state(), State::Paused);
    }

    void waitingPlayerPlaysOnAfterScrub()
    {
        m_fixture->player->setWaiting(true);
        m_fixture->holdAndRelease(Qt::Key_AudioForward, 3s);
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::WaitingToPlay);
    }

    void scrubStaysWithinRecording()
    {
        m_fixture->hold(Qt::Key_AudioRewind, 30s);
        QCOMPARE(m_fixture->controller.elapsedText(), u"0:00"_s);
        m_fixture->controller.release(Qt::Key_AudioRewind);
        m_fixture->hold(Qt::Key_AudioForward, 60s);
        QCOMPARE(m_fixture->controller.elapsedText(), u"59:57"_s);
        m_fixture->controller.release(Qt::Key_AudioForward);
        QCOMPARE(m_fixture->targets(), (QList<double>{0, 3597}));
    }

    void scrubWithoutMovementDoesNotSeek()
    {
        m_fixture->player->moveTo(3599);
        m_fixture->holdAndRelease(Qt::Key_AudioForward, 3s);
        QCOMPARE(m_fixture->player->seeks.size(), 0);
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::Playing);
    }

    void scrubIsLimitedByChangedDuration()
    {
        m_fixture->hold(Qt::Key_AudioForward, 8s);
        QCOMPARE(m_fixture->controller.elapsedText(), u"14:00"_s);
        m_fixture->player->setDuration(700);
        QCOMPARE(m_fixture->controller.elapsedText(), u"11:37"_s);
        m_fixture->controller.release(Qt::Key_AudioForward);
        QCOMPARE(m_fixture->targets(), QList<double>{697});
    }

    void anotherKeyEndsScrub()
    {
        m_fixture->hold(Qt::Key_AudioForward, 3s);
        m_fixture->controller.press(Qt::Key_Right);
        QCOMPARE(m_fixture->targets(), (QList<double>{632, 642}));
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::Playing);
        QVERIFY(!m_fixture->controller.release(Qt::Key_AudioForward));
        QCOMPARE(m_fixture->player->seeks.size(), 2);
    }

    void pressWithoutPriorReleaseEndsScrub()
    {
        m_fixture->hold(Qt::Key_AudioForward, 3s);
        m_fixture->controller.press(Qt::Key_AudioForward);
        QCOMPARE(m_fixture->targets(), QList<double>{632});
        QCOMPARE(m_fixture->controller.stateText(), u"Fast forward 8×"_s);
        m_fixture->clock.advance(1s);
        m_fixture->controller.press(Qt::Key_Left, true);
        QCOMPARE(m_fixture->targets(), (QList<double>{632, 640}));
        QCOMPARE(m_fixture->controller.state(), State::Rewinding);
    }

    void playEndsScrubAndPlays()
    {
        m_fixture->tap(Qt::Key_MediaPause);
        m_fixture->hold(Qt::Key_AudioForward, 3s);
        m_fixture->tap(Qt::Key_MediaPlay);
        QCOMPARE(m_fixture->targets(), QList<double>{632});
        QCOMPARE(m_fixture->controller.state(), State::Playing);
    }

    void releaseDoesNotSeekIfNoLongerSeekable()
    {
        m_fixture->hold(Qt::Key_AudioForward, 3s);
        m_fixture->player->setSeekable(false);
        m_fixture->controller.release(Qt::Key_AudioForward);
        QCOMPARE(m_fixture->player->seeks.size(), 0);
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::Playing);
    }

    void failureCancelsScrub()
    {
        m_fixture->hold(Qt::Key_AudioForward, 3s);
        m_fixture->player->fail({});
        QCOMPARE(m_fixture->controller.state(), State::Paused);
        QVERIFY(!m_fixture->controller.press(Qt::Key_AudioForward, true));
        QVERIFY(!m_fixture->controller.release(Qt::Key_AudioForward));
        QCOMPARE(m_fixture->player->seeks.size(), 0);
        QCOMPARE(m_fixture->player->timeControl(), TimeControl::Paused);
    }

    void removingPlayerCancelsScrub()
    {
        m_fixture->hold(Qt::Key_AudioForward, 3s);
        const qsizetype calls = m_fixture->player->calls()->size();
        m_fixture->controller.setPlayer(nullptr);
        QVERIFY(!m_fixture->controller.release(Qt::Key_AudioForward));
        QCOMPARE(m_fixture->player->calls()->size(), calls);
    }

private:
    std::optional<PlayerControllerFixture> m_fixture;
};

QUILLMERE_TEST(PlayerControllerScrubTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerScrubTest.moc"
