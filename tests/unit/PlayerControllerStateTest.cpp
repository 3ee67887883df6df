#include "PlayerControllerFixture.h"
#include "TestMain.h"

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace quillmere {

using State = PlayerController::State;

/** Tests the texts, state and times that the controls show of the player, and their change signals. */
class PlayerControllerStateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture.emplace(); }

    void textsComeFromItem()
    {
        QCOMPARE(m_fixture->controller.title(), QString());
        const QSignalSpy changes(&m_fixture->controller, &PlayerController::itemChanged);
        const auto item = std::make_shared<PlayerItem>(QUrl());
        using enum MetadataItem::Identifier;
        item->setExternalMetadata({{Title, u"t"_s}, {SubTitle, u"s"_s}, {Description, u"d\nd"_s}, {Publisher, u"p"_s}});
        m_fixture->player->setItem(item);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(m_fixture->controller.title(), u"t"_s);
        QCOMPARE(m_fixture->controller.subtitle(), u"s"_s);
        QCOMPARE(m_fixture->controller.description(), u"d\nd"_s);
        QCOMPARE(m_fixture->controller.publisher(), u"p"_s);
    }

    void veryLongTextIsCut()
    {
        const auto item = std::make_shared<PlayerItem>(QUrl());
        const QString endless(1'000'000, u'x');
        using enum MetadataItem::Identifier;
        item->setExternalMetadata({{Title, u"a\nb"_s + endless}, {SubTitle, endless}, {Description, endless}});
        m_fixture->player->setItem(item);
        QVERIFY(m_fixture->controller.title().startsWith(u"a bx"_s));
        QVERIFY(m_fixture->controller.title().size() < 2000);
        QVERIFY(m_fixture->controller.subtitle().size() < 2000);
        QVERIFY(m_fixture->controller.description().size() < 2000);
    }

    void stateFollowsPlayer()
    {
        QCOMPARE(m_fixture->controller.state(), State::Playing);
        QCOMPARE(m_fixture->controller.stateText(), u"Playing"_s);
        m_fixture->player->setWaiting(true);
        QCOMPARE(m_fixture->controller.state(), State::Waiting);
        QCOMPARE(m_fixture->controller.stateText(), u"Loading…"_s);
        m_fixture->player->pause();
        QCOMPARE(m_fixture->controller.state(), State::Paused);
        QCOMPARE(m_fixture->controller.stateText(), u"Paused"_s);
        m_fixture->controller.setPlayer(nullptr);
        QCOMPARE(m_fixture->controller.state(), State::Paused);
    }

    void pauseWhileLoadingIsShown()
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

    void timesAreThoseOfPlayer()
    {
        m_fixture->player->setBufferedTo(900);
        m_fixture->controller.press(Qt::Key_Up);
        QCOMPARE(m_fixture->controller.elapsedText(), u"10:00"_s);
        QCOMPARE(m_fixture->controller.remainingText(), u"-50:00"_s);
        QCOMPARE(m_fixture->controller.progress(), 683.0 / 4096);
        QCOMPARE(m_fixture->controller.bufferedPart(), 0.25);
        QVERIFY(m_fixture->controller.isSeekable());
        QVERIFY(!m_fixture->controller.isLive());
        m_fixture->player->moveTo(3);
        QCOMPARE(m_fixture->controller.elapsedText(), u"0:03"_s);
    }

    void timesChangeOncePerSecond()
    {
        m_fixture->player->setDuration(3600.9);
        m_fixture->controller.press(Qt::Key_Up);
        const QSignalSpy changes(&m_fixture->controller, &PlayerController::timesChanged);
        for (int tick = 1; tick <= 250; ++tick)
            m_fixture->player->moveTo(600 + tick * 0.04);
        QCOMPARE(changes.count(), 10);
        QCOMPARE(m_fixture->controller.elapsedText(), u"10:10"_s);
        QCOMPARE(m_fixture->controller.remainingText(), u"-49:50"_s);
    }

    void progressChangesByPixels()
    {
        m_fixture->player->setDuration(4096);
        m_fixture->controller.press(Qt::Key_Up);
        const QSignalSpy changes(&m_fixture->controller, &PlayerController::progressChanged);
        for (int tick = 1; tick <= 250; ++tick)
            m_fixture->player->moveTo(600 + tick * 0.04);
        QCOMPARE(changes.count(), 10);
        m_fixture->player->setBufferedTo(700);
        QCOMPARE(changes.count(), 11);
    }

    void timesAreUpdatedWhenBarIsShownButNotWhileHidden()
    {
        const QSignalSpy times(&m_fixture->controller, &PlayerController::timesChanged);
        const QSignalSpy progress(&m_fixture->controller, &PlayerController::progressChanged);
        const QSignalSpy states(&m_fixture->controller, &PlayerController::stateChanged);
        m_fixture->player->moveTo(700);
        m_fixture->player->setBufferedTo(900);
        m_fixture->player->setDuration(4000);
        QCOMPARE(times.count() + progress.count() + states.count(), 0);
        QString seen;
        const QObject context;
        connect(&m_fixture->controller, &PlayerController::transportShownChanged, &context,
                [&] { seen = m_fixture->controller.elapsedText(); });
        m_fixture->controller.press(Qt::Key_Up);
        QCOMPARE(seen, u"11:40"_s);
    }

    void lateDurationIsShown()
    {
        m_fixture->player->setDuration(0);
        m_fixture->controller.press(Qt::Key_Up);
        QCOMPARE(m_fixture->controller.elapsedText(), u"10:00"_s);
        QCOMPARE(m_fixture->controller.remainingText(), QString());
        QCOMPARE(m_fixture->controller.progress(), 0.0);
        QCOMPARE(m_fixture->controller.bufferedPart(), 0.0);
        m_fixture->player->setDuration(1200);
        QCOMPARE(m_fixture->controller.remainingText(), u"-10:00"_s);
        QCOMPARE(m_fixture->controller.progress(), 0.5);
    }

    void positionBeyondDurationIsShownAsEnd()
    {
        m_fixture->player->moveTo(3605);
        m_fixture->controller.press(Qt::Key_Up);
        QCOMPARE(m_fixture->controller.remainingText(), u"-0:00"_s);
        QCOMPARE(m_fixture->controller.progress(), 1.0);
    }

    void liveItemHasNoTimes()
    {
        m_fixture.emplace(PlayerItem::Kind::Live);
        m_fixture->player->setDuration(90); // the duration of the current live playlist
        m_fixture->controller.press(Qt::Key_Up);
        QVERIFY(m_fixture->controller.isLive());
        QCOMPARE(m_fixture->controller.stateText(), u"Live"_s);
        QCOMPARE(m_fixture->controller.elapsedText(), QString());
        QCOMPARE(m_fixture->controller.remainingText(), QString());
        QCOMPARE(m_fixture->controller.progress(), 0.0);
    }

    void unchangedStateIsNotNotified()
    {
        m_fixture->player->setWaiting(true);
        m_fixture->clock.advance(1s);
        m_fixture->tap(Qt::Key_Down);
        const QSignalSpy states(&m_fixture->controller, &PlayerController::stateChanged);
        const QSignalSpy spinner(&m_fixture->controller, &PlayerController::spinnerShownChanged);
        const QSignalSpy bar(&m_fixture->controller, &PlayerController::transportShownChanged);
        const QSignalSpy panel(&m_fixture->controller, &PlayerController::panelShownChanged);
        const QSignalSpy times(&m_fixture->controller, &PlayerController::timesChanged);
        m_fixture->player->setWaiting(true);
        m_fixture->player->moveTo(600);
        m_fixture->tap(Qt::Key_Down);
        QCOMPARE(states.count() + spinner.count() + bar.count() + panel.count() + times.count(), 0);
    }

    void playerMayBeDestroyedFirst()
    {
        m_fixture->tap(Qt::Key_Down);
        m_fixture->hold(Qt::Key_AudioForward, 1s);
        m_fixture->player->setWaiting(true);
        const QSignalSpy players(&m_fixture->controller, &PlayerController::playerChanged);
        m_fixture->player.reset();
        QCOMPARE(players.count(), 1);
        QCOMPARE(m_fixture->controller.player(), nullptr);
        QCOMPARE(m_fixture->controller.state(), State::Paused);
        QVERIFY(!m_fixture->controller.panelShown());
        QVERIFY(!m_fixture->controller.release(Qt::Key_AudioForward));
        QVERIFY(!m_fixture->controller.press(Qt::Key_Right));
        m_fixture->clock.advance(1min);
        QVERIFY(!m_fixture->controller.spinnerShown());
        QVERIFY(!m_fixture->controller.transportShown());
    }

    void onlyNewPlayerIsTracked()
    {
        ScriptedVideoPlayer next;
        m_fixture->controller.setPlayer(&next);
        next.setItem(std::make_shared<PlayerItem>(QUrl()));
        QCOMPARE(m_fixture->controller.state(), State::Waiting);
        next.play();
        next.showPicture();
        m_fixture->tap(Qt::Key_Down);
        const QSignalSpy states(&m_fixture->controller, &PlayerController::stateChanged);
        m_fixture->player->pause();
        m_fixture->item->setFailed({});
        m_fixture->player->setItem(nullptr);
        m_fixture->player.reset();
        QCOMPARE(states.count(), 0);
        QVERIFY(m_fixture->controller.panelShown());
        next.pause();
        QCOMPARE(m_fixture->controller.state(), State::Paused);
        m_fixture->controller.setPlayer(nullptr);
    }

private:
    std::optional<PlayerControllerFixture> m_fixture;
};

QUILLMERE_TEST(PlayerControllerStateTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerStateTest.moc"
