#include "PlayerControllerFixture.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace quillmere {

using State = PlayerController::State;

/** Tests the texts, state and times that the controls show of the player, and their change signals. */
class PlayerControllerStateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsComeFromItem();
    void veryLongTextIsCut();
    void stateFollowsPlayer();
    void pauseWhileLoadingIsShown();
    void timesAreThoseOfPlayer();
    void timesChangeOncePerSecond();
    void progressChangesByPixels();
    void positionIsNotUpdatedWhileBarIsHidden();
    void timesAreCurrentWhenBarIsShown();
    void positionJumpBackIsShown();
    void lateDurationIsShown();
    void positionBeyondDurationIsShownAsEnd();
    void liveItemHasNoTimes();
    void unchangedStateIsNotNotified();
    void playerMayBeDestroyedFirst();
    void onlyNewPlayerIsTracked();
};

void PlayerControllerStateTest::textsComeFromItem()
{
    PlayerControllerFixture fixture;
    QCOMPARE(fixture.controller.title(), QString());
    const QSignalSpy changes(&fixture.controller, &PlayerController::itemChanged);
    const auto item = std::make_shared<PlayerItem>(QUrl());
    using enum MetadataItem::Identifier;
    item->setExternalMetadata({{Title, u"t"_s}, {SubTitle, u"s"_s}, {Description, u"d\nd"_s}, {Publisher, u"p"_s}});
    fixture.player->setItem(item);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(fixture.controller.title(), u"t"_s);
    QCOMPARE(fixture.controller.subtitle(), u"s"_s);
    QCOMPARE(fixture.controller.description(), u"d\nd"_s);
    QCOMPARE(fixture.controller.publisher(), u"p"_s);
}

void PlayerControllerStateTest::veryLongTextIsCut()
{
    PlayerControllerFixture fixture;
    const auto item = std::make_shared<PlayerItem>(QUrl());
    const QString endless(1'000'000, u'x');
    using enum MetadataItem::Identifier;
    item->setExternalMetadata({{Title, u"a\nb"_s + endless}, {SubTitle, endless}, {Description, endless}});
    fixture.player->setItem(item);
    QVERIFY(fixture.controller.title().startsWith(u"a bx"_s));
    QVERIFY(fixture.controller.title().size() < 2000);
    QVERIFY(fixture.controller.subtitle().size() < 2000);
    QVERIFY(fixture.controller.description().size() < 2000);
}

void PlayerControllerStateTest::stateFollowsPlayer()
{
    PlayerControllerFixture fixture;
    QCOMPARE(fixture.controller.state(), State::Playing);
    QCOMPARE(fixture.controller.stateText(), u"Playing"_s);
    fixture.player->setWaiting(true);
    QCOMPARE(fixture.controller.state(), State::Waiting);
    QCOMPARE(fixture.controller.stateText(), u"Loading…"_s);
    fixture.player->pause();
    QCOMPARE(fixture.controller.state(), State::Paused);
    QCOMPARE(fixture.controller.stateText(), u"Paused"_s);
    fixture.controller.setPlayer(nullptr);
    QCOMPARE(fixture.controller.state(), State::Paused);
}

void PlayerControllerStateTest::pauseWhileLoadingIsShown()
{
    ScriptedClock clock;
    ScriptedVideoPlayer player;
    PlayerController controller(clock);
    controller.setPlayer(&player);
    player.setItem(std::make_shared<PlayerItem>(QUrl()));
    player.play();
    QCOMPARE(controller.state(), State::Waiting);
    controller.press(Qt::Key_MediaPause);
    QCOMPARE(controller.state(), State::Paused);
}

void PlayerControllerStateTest::timesAreThoseOfPlayer()
{
    PlayerControllerFixture fixture;
    fixture.player->setBufferedTo(900);
    fixture.controller.press(Qt::Key_Up);
    QCOMPARE(fixture.controller.elapsedText(), u"10:00"_s);
    QCOMPARE(fixture.controller.remainingText(), u"-50:00"_s);
    QCOMPARE(fixture.controller.progress(), 683.0 / 4096);
    QCOMPARE(fixture.controller.bufferedPart(), 0.25);
    QVERIFY(fixture.controller.isSeekable());
    QVERIFY(!fixture.controller.isLive());
}

void PlayerControllerStateTest::timesChangeOncePerSecond()
{
    PlayerControllerFixture fixture;
    fixture.player->setDuration(3600.9);
    fixture.controller.press(Qt::Key_Up);
    const QSignalSpy changes(&fixture.controller, &PlayerController::timesChanged);
    for (int tick = 1; tick <= 250; ++tick)
        fixture.player->moveTo(600 + tick * 0.04);
    QCOMPARE(changes.count(), 10);
    QCOMPARE(fixture.controller.elapsedText(), u"10:10"_s);
    QCOMPARE(fixture.controller.remainingText(), u"-49:50"_s);
}

void PlayerControllerStateTest::progressChangesByPixels()
{
    PlayerControllerFixture fixture;
    fixture.player->setDuration(4096);
    fixture.controller.press(Qt::Key_Up);
    const QSignalSpy changes(&fixture.controller, &PlayerController::progressChanged);
    for (int tick = 1; tick <= 250; ++tick)
        fixture.player->moveTo(600 + tick * 0.04);
    QCOMPARE(changes.count(), 10);
    fixture.player->setBufferedTo(700);
    QCOMPARE(changes.count(), 11);
}

void PlayerControllerStateTest::positionIsNotUpdatedWhileBarIsHidden()
{
    PlayerControllerFixture fixture;
    const QSignalSpy times(&fixture.controller, &PlayerController::timesChanged);
    const QSignalSpy progress(&fixture.controller, &PlayerController::progressChanged);
    const QSignalSpy states(&fixture.controller, &PlayerController::stateChanged);
    fixture.player->moveTo(700);
    fixture.player->setBufferedTo(900);
    fixture.player->setDuration(4000);
    QCOMPARE(times.count() + progress.count() + states.count(), 0);
}

void PlayerControllerStateTest::timesAreCurrentWhenBarIsShown()
{
    PlayerControllerFixture fixture;
    fixture.player->moveTo(700);
    QString seen;
    connect(&fixture.controller, &PlayerController::transportShownChanged, this,
            [&] { seen = fixture.controller.elapsedText(); });
    fixture.controller.press(Qt::Key_Up);
    QCOMPARE(seen, u"11:40"_s);
}

void PlayerControllerStateTest::positionJumpBackIsShown()
{
    PlayerControllerFixture fixture;
    fixture.controller.press(Qt::Key_Up);
    fixture.player->moveTo(3);
    QCOMPARE(fixture.controller.elapsedText(), u"0:03"_s);
}

void PlayerControllerStateTest::lateDurationIsShown()
{
    PlayerControllerFixture fixture;
    fixture.player->setDuration(0);
    fixture.controller.press(Qt::Key_Up);
    QCOMPARE(fixture.controller.elapsedText(), u"10:00"_s);
    QCOMPARE(fixture.controller.remainingText(), QString());
    QCOMPARE(fixture.controller.progress(), 0.0);
    QCOMPARE(fixture.controller.bufferedPart(), 0.0);
    fixture.player->setDuration(1200);
    QCOMPARE(fixture.controller.remainingText(), u"-10:00"_s);
    QCOMPARE(fixture.controller.progress(), 0.5);
}

void PlayerControllerStateTest::positionBeyondDurationIsShownAsEnd()
{
    PlayerControllerFixture fixture;
    fixture.player->moveTo(3605);
    fixture.controller.press(Qt::Key_Up);
    QCOMPARE(fixture.controller.remainingText(), u"-0:00"_s);
    QCOMPARE(fixture.controller.progress(), 1.0);
}

void PlayerControllerStateTest::liveItemHasNoTimes()
{
    PlayerControllerFixture fixture(PlayerItem::Kind::Live);
    fixture.player->setDuration(90); // the duration of the current live playlist
    fixture.controller.press(Qt::Key_Up);
    QVERIFY(fixture.controller.isLive());
    QCOMPARE(fixture.controller.stateText(), u"Live"_s);
    QCOMPARE(fixture.controller.elapsedText(), QString());
    QCOMPARE(fixture.controller.remainingText(), QString());
    QCOMPARE(fixture.controller.progress(), 0.0);
}

void PlayerControllerStateTest::unchangedStateIsNotNotified()
{
    PlayerControllerFixture fixture;
    fixture.player->setWaiting(true);
    fixture.clock.advance(1s);
    fixture.tap(Qt::Key_Down);
    const QSignalSpy states(&fixture.controller, &PlayerController::stateChanged);
    const QSignalSpy spinner(&fixture.controller, &PlayerController::spinnerShownChanged);
    const QSignalSpy bar(&fixture.controller, &PlayerController::transportShownChanged);
    const QSignalSpy panel(&fixture.controller, &PlayerController::panelShownChanged);
    const QSignalSpy times(&fixture.controller, &PlayerController::timesChanged);
    fixture.player->setWaiting(true);
    fixture.player->moveTo(600);
    fixture.tap(Qt::Key_Down);
    QCOMPARE(states.count() + spinner.count() + bar.count() + panel.count() + times.count(), 0);
}

void PlayerControllerStateTest::playerMayBeDestroyedFirst()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_Down);
    fixture.hold(Qt::Key_AudioForward, 1s);
    fixture.player->setWaiting(true);
    const QSignalSpy players(&fixture.controller, &PlayerController::playerChanged);
    fixture.player.reset();
    QCOMPARE(players.count(), 1);
    QCOMPARE(fixture.controller.player(), nullptr);
    QCOMPARE(fixture.controller.state(), State::Paused);
    QVERIFY(!fixture.controller.panelShown());
    QVERIFY(!fixture.controller.release(Qt::Key_AudioForward));
    QVERIFY(!fixture.controller.press(Qt::Key_Right));
    fixture.clock.advance(1min);
    QVERIFY(!fixture.controller.spinnerShown());
    QVERIFY(!fixture.controller.transportShown());
}

void PlayerControllerStateTest::onlyNewPlayerIsTracked()
{
    PlayerControllerFixture fixture;
    SeekingPlayer next;
    fixture.controller.setPlayer(&next);
    next.setItem(std::make_shared<PlayerItem>(QUrl()));
    QCOMPARE(fixture.controller.state(), State::Waiting);
    next.play();
    next.showPicture();
    fixture.tap(Qt::Key_Down);
    const QSignalSpy states(&fixture.controller, &PlayerController::stateChanged);
    fixture.player->pause();
    fixture.item->setFailed({});
    fixture.player->setItem(nullptr);
    fixture.player.reset();
    QCOMPARE(states.count(), 0);
    QVERIFY(fixture.controller.panelShown());
    next.pause();
    QCOMPARE(fixture.controller.state(), State::Paused);
    fixture.controller.setPlayer(nullptr);
}

QUILLMERE_TEST(PlayerControllerStateTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerStateTest.moc"
