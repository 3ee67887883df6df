#include "PlayerOnScript.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
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
    PlayerOnScript script;
    QCOMPARE(script.controller.title(), QString());
    const QSignalSpy changes(&script.controller, &PlayerController::itemChanged);
    const auto item = std::make_shared<PlayerItem>(QUrl());
    using enum MetadataItem::Identifier;
    item->setExternalMetadata({{Title, u"t"_s}, {SubTitle, u"s"_s}, {Description, u"d\nd"_s}, {Publisher, u"p"_s}});
    script.player->setItem(item);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(script.controller.title(), u"t"_s);
    QCOMPARE(script.controller.subtitle(), u"s"_s);
    QCOMPARE(script.controller.description(), u"d\nd"_s);
    QCOMPARE(script.controller.publisher(), u"p"_s);
}

void PlayerControllerStateTest::veryLongTextIsCut()
{
    PlayerOnScript script;
    const auto item = std::make_shared<PlayerItem>(QUrl());
    const QString endless(1'000'000, u'x');
    using enum MetadataItem::Identifier;
    item->setExternalMetadata({{Title, u"a\nb"_s + endless}, {SubTitle, endless}, {Description, endless}});
    script.player->setItem(item);
    QVERIFY(script.controller.title().startsWith(u"a bx"_s));
    QVERIFY(script.controller.title().size() < 2000);
    QVERIFY(script.controller.subtitle().size() < 2000);
    QVERIFY(script.controller.description().size() < 2000);
}

void PlayerControllerStateTest::stateFollowsPlayer()
{
    PlayerOnScript script;
    QCOMPARE(script.controller.state(), State::Playing);
    QCOMPARE(script.controller.stateText(), u"Playing"_s);
    script.player->setWaiting(true);
    QCOMPARE(script.controller.state(), State::Waiting);
    QCOMPARE(script.controller.stateText(), u"Loading…"_s);
    script.player->pause();
    QCOMPARE(script.controller.state(), State::Paused);
    QCOMPARE(script.controller.stateText(), u"Paused"_s);
    script.controller.setPlayer(nullptr);
    QCOMPARE(script.controller.state(), State::Paused);
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
    PlayerOnScript script;
    script.player->setBufferedTo(900);
    script.controller.press(Qt::Key_Up);
    QCOMPARE(script.controller.elapsedText(), u"10:00"_s);
    QCOMPARE(script.controller.remainingText(), u"-50:00"_s);
    QCOMPARE(script.controller.progress(), 683.0 / 4096);
    QCOMPARE(script.controller.bufferedPart(), 0.25);
    QVERIFY(script.controller.isSeekable());
    QVERIFY(!script.controller.isLive());
}

void PlayerControllerStateTest::timesChangeOncePerSecond()
{
    PlayerOnScript script;
    script.player->setDuration(3600.9);
    script.controller.press(Qt::Key_Up);
    const QSignalSpy changes(&script.controller, &PlayerController::timesChanged);
    for (int tick = 1; tick <= 250; ++tick)
        script.player->moveTo(600 + tick * 0.04);
    QCOMPARE(changes.count(), 10);
    QCOMPARE(script.controller.elapsedText(), u"10:10"_s);
    QCOMPARE(script.controller.remainingText(), u"-49:50"_s);
}

void PlayerControllerStateTest::progressChangesByPixels()
{
    PlayerOnScript script;
    script.player->setDuration(4096);
    script.controller.press(Qt::Key_Up);
    const QSignalSpy changes(&script.controller, &PlayerController::progressChanged);
    for (int tick = 1; tick <= 250; ++tick)
        script.player->moveTo(600 + tick * 0.04);
    QCOMPARE(changes.count(), 10);
    script.player->setBufferedTo(700);
    QCOMPARE(changes.count(), 11);
}

void PlayerControllerStateTest::positionIsNotUpdatedWhileBarIsHidden()
{
    PlayerOnScript script;
    const QSignalSpy times(&script.controller, &PlayerController::timesChanged);
    const QSignalSpy progress(&script.controller, &PlayerController::progressChanged);
    const QSignalSpy states(&script.controller, &PlayerController::stateChanged);
    script.player->moveTo(700);
    script.player->setBufferedTo(900);
    script.player->setDuration(4000);
    QCOMPARE(times.count() + progress.count() + states.count(), 0);
}

void PlayerControllerStateTest::timesAreCurrentWhenBarIsShown()
{
    PlayerOnScript script;
    script.player->moveTo(700);
    QString seen;
    connect(&script.controller, &PlayerController::transportShownChanged, this,
            [&] { seen = script.controller.elapsedText(); });
    script.controller.press(Qt::Key_Up);
    QCOMPARE(seen, u"11:40"_s);
}

void PlayerControllerStateTest::positionJumpBackIsShown()
{
    PlayerOnScript script;
    script.controller.press(Qt::Key_Up);
    script.player->moveTo(3);
    QCOMPARE(script.controller.elapsedText(), u"0:03"_s);
}

void PlayerControllerStateTest::lateDurationIsShown()
{
    PlayerOnScript script;
    script.player->setDuration(0);
    script.controller.press(Qt::Key_Up);
    QCOMPARE(script.controller.elapsedText(), u"10:00"_s);
    QCOMPARE(script.controller.remainingText(), QString());
    QCOMPARE(script.controller.progress(), 0.0);
    QCOMPARE(script.controller.bufferedPart(), 0.0);
    script.player->setDuration(1200);
    QCOMPARE(script.controller.remainingText(), u"-10:00"_s);
    QCOMPARE(script.controller.progress(), 0.5);
}

void PlayerControllerStateTest::positionBeyondDurationIsShownAsEnd()
{
    PlayerOnScript script;
    script.player->moveTo(3605);
    script.controller.press(Qt::Key_Up);
    QCOMPARE(script.controller.remainingText(), u"-0:00"_s);
    QCOMPARE(script.controller.progress(), 1.0);
}

void PlayerControllerStateTest::liveItemHasNoTimes()
{
    PlayerOnScript script(PlayerItem::Kind::Live);
    script.player->setDuration(90); // the duration of the current live playlist
    script.controller.press(Qt::Key_Up);
    QVERIFY(script.controller.isLive());
    QCOMPARE(script.controller.stateText(), u"Live"_s);
    QCOMPARE(script.controller.elapsedText(), QString());
    QCOMPARE(script.controller.remainingText(), QString());
    QCOMPARE(script.controller.progress(), 0.0);
}

void PlayerControllerStateTest::unchangedStateIsNotNotified()
{
    PlayerOnScript script;
    script.player->setWaiting(true);
    script.clock.advance(1s);
    script.tap(Qt::Key_Down);
    const QSignalSpy states(&script.controller, &PlayerController::stateChanged);
    const QSignalSpy spinner(&script.controller, &PlayerController::spinnerShownChanged);
    const QSignalSpy bar(&script.controller, &PlayerController::transportShownChanged);
    const QSignalSpy panel(&script.controller, &PlayerController::panelShownChanged);
    const QSignalSpy times(&script.controller, &PlayerController::timesChanged);
    script.player->setWaiting(true);
    script.player->moveTo(600);
    script.tap(Qt::Key_Down);
    QCOMPARE(states.count() + spinner.count() + bar.count() + panel.count() + times.count(), 0);
}

void PlayerControllerStateTest::playerMayBeDestroyedFirst()
{
    PlayerOnScript script;
    script.tap(Qt::Key_Down);
    script.hold(Qt::Key_AudioForward, 1s);
    script.player->setWaiting(true);
    const QSignalSpy players(&script.controller, &PlayerController::playerChanged);
    script.player.reset();
    QCOMPARE(players.count(), 1);
    QCOMPARE(script.controller.player(), nullptr);
    QCOMPARE(script.controller.state(), State::Paused);
    QVERIFY(!script.controller.panelShown());
    QVERIFY(!script.controller.release(Qt::Key_AudioForward));
    QVERIFY(!script.controller.press(Qt::Key_Right));
    script.clock.advance(1min);
    QVERIFY(!script.controller.spinnerShown());
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerStateTest::onlyNewPlayerIsTracked()
{
    PlayerOnScript script;
    SeekingPlayer next;
    script.controller.setPlayer(&next);
    next.setItem(std::make_shared<PlayerItem>(QUrl()));
    QCOMPARE(script.controller.state(), State::Waiting);
    next.play();
    next.showPicture();
    script.tap(Qt::Key_Down);
    const QSignalSpy states(&script.controller, &PlayerController::stateChanged);
    script.player->pause();
    script.item->setFailed({});
    script.player->setItem(nullptr);
    script.player.reset();
    QCOMPARE(states.count(), 0);
    QVERIFY(script.controller.panelShown());
    next.pause();
    QCOMPARE(script.controller.state(), State::Paused);
    script.controller.setPlayer(nullptr);
}

QUILLMERE_TEST(PlayerControllerStateTest, QCoreApplication)
#include "PlayerControllerStateTest.moc"
