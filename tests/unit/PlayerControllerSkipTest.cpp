#include "PlayerControllerFixture.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

using TimeControl = VideoPlayer::TimeControl;

/** Tests the keys that act at once: play, pause and the skip keys. */
class PlayerControllerSkipTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void selectAndPlayPauseTogglePlayback_data();
    void selectAndPlayPauseTogglePlayback();
    void playKeyPlaysAndPauseKeyPauses();
    void pauseWhileWaitingForDataIsKept();
    void stopLeavesPlayerAtOnce();
    void skipHasExpectedDistance_data();
    void skipHasExpectedDistance();
    void skipSeeksAtOrAfterTarget();
    void quickSkipsAddUp();
    void skipAfterFailedSeekStartsFromPosition();
    void skipStaysWithinRecording_data();
    void skipStaysWithinRecording();
    void skipForwardNearEndDoesNotGoBack();
    void pausedPlayerStaysPausedAfterSkip();
    void heldNextSkipsOnce();
    void streamThatIsNotSeekableDoesNotSkip_data();
    void streamThatIsNotSeekableDoesNotSkip();
    void unusedKeyIsNotHandled();
    void withoutPlayerOnlyBackAndStopAreHandled();
};

void PlayerControllerSkipTest::selectAndPlayPauseTogglePlayback_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("select") << Qt::Key_Select;
    QTest::newRow("play/pause") << Qt::Key_MediaTogglePlayPause;
}

void PlayerControllerSkipTest::selectAndPlayPauseTogglePlayback()
{
    QFETCH(const Qt::Key, key);
    PlayerControllerFixture fixture;
    QVERIFY(fixture.tap(key));
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QVERIFY(fixture.tap(key));
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
}

void PlayerControllerSkipTest::playKeyPlaysAndPauseKeyPauses()
{
    PlayerControllerFixture fixture;
    QVERIFY(fixture.tap(Qt::Key_MediaPlay));
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    QVERIFY(fixture.tap(Qt::Key_MediaPause));
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QVERIFY(fixture.tap(Qt::Key_MediaPause));
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QVERIFY(fixture.tap(Qt::Key_MediaPlay));
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
}

void PlayerControllerSkipTest::pauseWhileWaitingForDataIsKept()
{
    PlayerControllerFixture fixture;
    fixture.player->setWaiting(true);
    fixture.tap(Qt::Key_Select);
    fixture.player->setWaiting(false);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
}

void PlayerControllerSkipTest::stopLeavesPlayerAtOnce()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_Down);
    const QSignalSpy dismissRequested(&fixture.controller, &PlayerController::dismissRequested);
    QVERIFY(fixture.tap(Qt::Key_MediaStop));
    QCOMPARE(dismissRequested.count(), 1);
}

void PlayerControllerSkipTest::skipHasExpectedDistance_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<double>("target");
    QTest::newRow("left") << Qt::Key_Left << 1490.0;
    QTest::newRow("right") << Qt::Key_Right << 1510.0;
    QTest::newRow("previous") << Qt::Key_MediaPrevious << 900.0;
    QTest::newRow("next") << Qt::Key_MediaNext << 2100.0;
}

void PlayerControllerSkipTest::skipHasExpectedDistance()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const double, target);
    PlayerControllerFixture fixture;
    fixture.player->moveTo(1500);
    QVERIFY(fixture.controller.press(key));
    QCOMPARE(fixture.player->targets(), QList<double>{target});
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    fixture.controller.release(key);
    QCOMPARE(fixture.player->seeks.size(), 1);
}

void PlayerControllerSkipTest::skipSeeksAtOrAfterTarget()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_Left);
    QCOMPARE(fixture.player->seeks.first().tolerance, SeekTolerance::AtOrAfter);
}

void PlayerControllerSkipTest::quickSkipsAddUp()
{
    PlayerControllerFixture fixture;
    for (const int key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_MediaNext})
        fixture.tap(key);
    QCOMPARE(fixture.player->targets(), (QList<double>{610, 620, 630, 620, 1220}));
}

void PlayerControllerSkipTest::skipAfterFailedSeekStartsFromPosition()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_Right);
    fixture.player->moveTo(601);
    fixture.tap(Qt::Key_Right);
    QCOMPARE(fixture.player->targets(), (QList<double>{610, 611}));
}

void PlayerControllerSkipTest::skipStaysWithinRecording_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<double>("target");
    QTest::newRow("back beyond the start") << 4.0 << Qt::Key_Left << 0.0;
    QTest::newRow("ten minutes back beyond the start") << 599.0 << Qt::Key_MediaPrevious << 0.0;
    QTest::newRow("forward beyond the end") << 3592.0 << Qt::Key_Right << 3597.0;
    QTest::newRow("ten minutes forward beyond the end") << 3300.0 << Qt::Key_MediaNext << 3597.0;
    QTest::newRow("back from the end") << 3600.0 << Qt::Key_Left << 3590.0;
    QTest::newRow("back from beyond the end") << 3800.0 << Qt::Key_Left << 3597.0;
}

void PlayerControllerSkipTest::skipStaysWithinRecording()
{
    QFETCH(const double, position);
    QFETCH(const Qt::Key, key);
    QFETCH(const double, target);
    PlayerControllerFixture fixture;
    fixture.player->moveTo(position);
    fixture.tap(key);
    QCOMPARE(fixture.player->targets(), QList<double>{target});
}

void PlayerControllerSkipTest::skipForwardNearEndDoesNotGoBack()
{
    PlayerControllerFixture fixture;
    for (const double position : {3597.0, 3599.5, 3600.0, 3605.0}) {
        fixture.player->moveTo(position);
        QVERIFY(fixture.tap(Qt::Key_Right));
        QVERIFY(fixture.tap(Qt::Key_MediaNext));
    }
    fixture.player->setDuration(2); // shorter than the last part of a recording, which is always played
    fixture.player->moveTo(1);
    QVERIFY(fixture.tap(Qt::Key_Right));
    QCOMPARE(fixture.player->targets(), QList<double>());
}

void PlayerControllerSkipTest::pausedPlayerStaysPausedAfterSkip()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_MediaPause);
    fixture.tap(Qt::Key_Right);
    fixture.player->finishSeek(true);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
}

void PlayerControllerSkipTest::heldNextSkipsOnce()
{
    PlayerControllerFixture fixture;
    fixture.hold(Qt::Key_MediaNext, 3s);
    fixture.controller.release(Qt::Key_MediaNext);
    QCOMPARE(fixture.player->targets(), QList<double>{1200});
}

void PlayerControllerSkipTest::streamThatIsNotSeekableDoesNotSkip_data()
{
    QTest::addColumn<PlayerItem::Kind>("kind");
    QTest::addColumn<bool>("isSeekable");
    QTest::addColumn<double>("duration");
    QTest::newRow("live") << PlayerItem::Kind::Live << false << 0.0;
    QTest::newRow("a recording that is not seekable") << PlayerItem::Kind::Recording << false << 3600.0;
    QTest::newRow("no duration yet") << PlayerItem::Kind::Recording << true << 0.0;
}

void PlayerControllerSkipTest::streamThatIsNotSeekableDoesNotSkip()
{
    QFETCH(const PlayerItem::Kind, kind);
    QFETCH(const bool, isSeekable);
    QFETCH(const double, duration);
    PlayerControllerFixture fixture(kind);
    fixture.player->setSeekable(isSeekable);
    fixture.player->setDuration(duration);
    for (const int key :
         {Qt::Key_Left, Qt::Key_Right, Qt::Key_MediaNext, Qt::Key_MediaPrevious, Qt::Key_AudioForward}) {
        fixture.hold(key, 3s);
        fixture.controller.release(key);
    }
    QCOMPARE(fixture.player->targets(), QList<double>());
    QCOMPARE(fixture.player->position(), 600.0);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    QCOMPARE(fixture.controller.state(), PlayerController::State::Playing);
}

void PlayerControllerSkipTest::unusedKeyIsNotHandled()
{
    PlayerControllerFixture fixture;
    QVERIFY(!fixture.tap(Qt::Key_ChannelUp));
    QVERIFY(!fixture.controller.release(Qt::Key_Right));
}

void PlayerControllerSkipTest::withoutPlayerOnlyBackAndStopAreHandled()
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

QUILLMERE_TEST(PlayerControllerSkipTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerSkipTest.moc"
