#include "PlayerControllerFixture.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace quillmere {

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
    PlayerControllerFixture fixture;
    QVERIFY(fixture.tap(Qt::Key_Up));
    QVERIFY(!fixture.controller.panelShown());
    QVERIFY(fixture.tap(Qt::Key_Down));
    QVERIFY(fixture.controller.panelShown());
    QVERIFY(fixture.tap(Qt::Key_Down));
    QVERIFY(fixture.controller.panelShown());
    QVERIFY(fixture.tap(Qt::Key_Up));
    QVERIFY(!fixture.controller.panelShown());
}

void PlayerControllerPanelTest::panelDoesNotHideByItself()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_Down);
    fixture.clock.advance(1h);
    QVERIFY(fixture.controller.panelShown());
    QVERIFY(!fixture.controller.transportShown());
}

void PlayerControllerPanelTest::panelWithTracksGetsArrowKeys()
{
    PlayerControllerFixture fixture;
    fixture.player->setTracks(subtitles);
    fixture.tap(Qt::Key_Down);
    for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Down, Qt::Key_Select}) {
        QVERIFY(!fixture.controller.press(key));
        QVERIFY(!fixture.controller.press(key, true));
    }
    QCOMPARE(fixture.player->seeks.size(), 0);
    QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Playing);
    QVERIFY(fixture.tap(Qt::Key_MediaTogglePlayPause));
    QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Paused);
}

void PlayerControllerPanelTest::panelWithoutTracksLeavesArrowKeysToPlayer()
{
    PlayerControllerFixture fixture;
    fixture.tap(Qt::Key_Down);
    QVERIFY(fixture.tap(Qt::Key_Right));
    QCOMPARE(fixture.player->targets(), QList<double>{610});
    QVERIFY(fixture.tap(Qt::Key_Select));
    QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Paused);
    QVERIFY(fixture.controller.panelShown());
}

void PlayerControllerPanelTest::upClosesPanelOnlyFromTop()
{
    PlayerControllerFixture fixture;
    fixture.player->setTracks(subtitles);
    fixture.tap(Qt::Key_Down);
    fixture.controller.setPanelTopFocused(false);
    QVERIFY(!fixture.controller.press(Qt::Key_Up));
    QVERIFY(fixture.controller.panelShown());
    fixture.controller.setPanelTopFocused(true);
    QVERIFY(fixture.controller.press(Qt::Key_Up));
    QVERIFY(!fixture.controller.panelShown());
}

void PlayerControllerPanelTest::repeatedUpDoesNotClosePanel()
{
    PlayerControllerFixture fixture;
    fixture.player->setTracks(subtitles);
    fixture.tap(Qt::Key_Down);
    QVERIFY(fixture.controller.press(Qt::Key_Up, true));
    QVERIFY(fixture.controller.panelShown());
}

void PlayerControllerPanelTest::pickedTrackIsSelectedInPlayer()
{
    PlayerControllerFixture fixture;
    fixture.player->setTracks(subtitles);
    fixture.controller.subtitleTracks()->pick(1);
    fixture.controller.subtitleTracks()->pick(0);
    QCOMPARE(fixture.player->selections.size(), 2);
    QCOMPARE(fixture.player->selections.first().kind, MediaTrack::Kind::Subtitle);
    QCOMPARE(fixture.player->selections.first().id, 1);
    QCOMPARE(fixture.player->selections.last().id, MediaTrack::none);
    fixture.player.reset();
    fixture.controller.subtitleTracks()->pick(0);
}

void PlayerControllerPanelTest::trackListsFollowPlayer()
{
    PlayerControllerFixture fixture;
    fixture.player->setTracks(subtitles);
    QCOMPARE(fixture.controller.subtitleTracks()->count(), 2);
    QCOMPARE(fixture.controller.audioTracks()->count(), 0);
    fixture.controller.setPlayer(nullptr);
    QCOMPARE(fixture.controller.subtitleTracks()->count(), 0);
    fixture.controller.setPlayer(fixture.player.get());
    QCOMPARE(fixture.controller.subtitleTracks()->count(), 2);
}

QUILLMERE_TEST(PlayerControllerPanelTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerPanelTest.moc"
