#include "PlayerOnScript.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

/** Tests how the information panel opens and closes, and which keys it handles while it is open. */
class PlayerControllerPanelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void downOpensPanelAndUpClosesIt();
    void panelDoesNotHideByItself();
    void panelWithTracksGetsArrowKeys();
    void panelWithoutTracksLeavesArrowKeysToPlayer();
    void upClosesPanelOnlyFromTop();
    void repeatedUpDoesNotClosePanel();
    void pickedTrackIsSelectedInPlayer();
    void trackListsFollowPlayer();
};

namespace {

const QList<MediaTrack> subtitles{{1, MediaTrack::Kind::Subtitle, u"English"_s, {}, false}};

} // namespace

void PlayerControllerPanelTest::downOpensPanelAndUpClosesIt()
{
    PlayerOnScript script;
    QVERIFY(script.tap(Qt::Key_Up));
    QVERIFY(!script.controller.panelShown());
    QVERIFY(script.tap(Qt::Key_Down));
    QVERIFY(script.controller.panelShown());
    QVERIFY(script.tap(Qt::Key_Down));
    QVERIFY(script.controller.panelShown());
    QVERIFY(script.tap(Qt::Key_Up));
    QVERIFY(!script.controller.panelShown());
}

void PlayerControllerPanelTest::panelDoesNotHideByItself()
{
    PlayerOnScript script;
    script.tap(Qt::Key_Down);
    script.clock.advance(1h);
    QVERIFY(script.controller.panelShown());
    QVERIFY(!script.controller.transportShown());
}

void PlayerControllerPanelTest::panelWithTracksGetsArrowKeys()
{
    PlayerOnScript script;
    script.player->setTracks(subtitles);
    script.tap(Qt::Key_Down);
    for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Down, Qt::Key_Select}) {
        QVERIFY(!script.controller.press(key));
        QVERIFY(!script.controller.press(key, true));
    }
    QCOMPARE(script.player->seeks.size(), 0);
    QCOMPARE(script.player->timeControl(), VideoPlayer::TimeControl::Playing);
    QVERIFY(script.tap(Qt::Key_MediaTogglePlayPause));
    QCOMPARE(script.player->timeControl(), VideoPlayer::TimeControl::Paused);
}

void PlayerControllerPanelTest::panelWithoutTracksLeavesArrowKeysToPlayer()
{
    PlayerOnScript script;
    script.tap(Qt::Key_Down);
    QVERIFY(script.tap(Qt::Key_Right));
    QCOMPARE(script.player->targets(), QList<double>{610});
    QVERIFY(script.tap(Qt::Key_Select));
    QCOMPARE(script.player->timeControl(), VideoPlayer::TimeControl::Paused);
    QVERIFY(script.controller.panelShown());
}

void PlayerControllerPanelTest::upClosesPanelOnlyFromTop()
{
    PlayerOnScript script;
    script.player->setTracks(subtitles);
    script.tap(Qt::Key_Down);
    script.controller.setPanelTopFocused(false);
    QVERIFY(!script.controller.press(Qt::Key_Up));
    QVERIFY(script.controller.panelShown());
    script.controller.setPanelTopFocused(true);
    QVERIFY(script.controller.press(Qt::Key_Up));
    QVERIFY(!script.controller.panelShown());
}

void PlayerControllerPanelTest::repeatedUpDoesNotClosePanel()
{
    PlayerOnScript script;
    script.player->setTracks(subtitles);
    script.tap(Qt::Key_Down);
    QVERIFY(script.controller.press(Qt::Key_Up, true));
    QVERIFY(script.controller.panelShown());
}

void PlayerControllerPanelTest::pickedTrackIsSelectedInPlayer()
{
    PlayerOnScript script;
    script.player->setTracks(subtitles);
    script.controller.subtitleTracks()->pick(1);
    script.controller.subtitleTracks()->pick(0);
    QCOMPARE(script.player->selections.size(), 2);
    QCOMPARE(script.player->selections.first().kind, MediaTrack::Kind::Subtitle);
    QCOMPARE(script.player->selections.first().id, 1);
    QCOMPARE(script.player->selections.last().id, MediaTrack::none);
    script.player.reset();
    script.controller.subtitleTracks()->pick(0);
}

void PlayerControllerPanelTest::trackListsFollowPlayer()
{
    PlayerOnScript script;
    script.player->setTracks(subtitles);
    QCOMPARE(script.controller.subtitleTracks()->count(), 2);
    QCOMPARE(script.controller.audioTracks()->count(), 0);
    script.controller.setPlayer(nullptr);
    QCOMPARE(script.controller.subtitleTracks()->count(), 0);
    script.controller.setPlayer(script.player.get());
    QCOMPARE(script.controller.subtitleTracks()->count(), 2);
}

QUILLMERE_TEST(PlayerControllerPanelTest, QCoreApplication)
#include "PlayerControllerPanelTest.moc"
