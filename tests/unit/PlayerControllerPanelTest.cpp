#include "PlayerControllerFixture.h"
#include "TestMain.h"

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

const QList<MediaTrack> subtitles{{1, MediaTrack::Kind::Subtitle, u"English"_s, {}, false}};

} // namespace

/** Tests how the information panel opens and closes, and which keys it handles while it is open. */
class PlayerControllerPanelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture.emplace(); }

    void downOpensPanelAndUpClosesIt()
    {
        QVERIFY(m_fixture->tap(Qt::Key_Up));
        QVERIFY(!m_fixture->controller.panelShown());
        QVERIFY(m_fixture->tap(Qt::Key_Down));
        QVERIFY(m_fixture->controller.panelShown());
        QVERIFY(m_fixture->tap(Qt::Key_Down));
        QVERIFY(m_fixture->controller.panelShown());
        QVERIFY(m_fixture->tap(Qt::Key_Up));
        QVERIFY(!m_fixture->controller.panelShown());
    }

    void panelDoesNotHideByItself()
    {
        m_fixture->tap(Qt::Key_Down);
        m_fixture->clock.advance(1h);
        QVERIFY(m_fixture->controller.panelShown());
        QVERIFY(!m_fixture->controller.transportShown());
    }

    void panelWithTracksGetsArrowKeys()
    {
        m_fixture->player->setTracks(subtitles);
        m_fixture->tap(Qt::Key_Down);
        for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Down, Qt::Key_Select}) {
            QVERIFY(!m_fixture->controller.press(key));
            QVERIFY(!m_fixture->controller.press(key, true));
        }
        QCOMPARE(m_fixture->player->seeks.size(), 0);
        QCOMPARE(m_fixture->player->timeControl(), VideoPlayer::TimeControl::Playing);
        QVERIFY(m_fixture->tap(Qt::Key_MediaTogglePlayPause));
        QCOMPARE(m_fixture->player->timeControl(), VideoPlayer::TimeControl::Paused);
    }

    void panelWithoutTracksLeavesArrowKeysToPlayer()
    {
        m_fixture->tap(Qt::Key_Down);
        QVERIFY(m_fixture->tap(Qt::Key_Right));
        QCOMPARE(m_fixture->targets(), QList<double>{610});
        QVERIFY(m_fixture->tap(Qt::Key_Select));
        QCOMPARE(m_fixture->player->timeControl(), VideoPlayer::TimeControl::Paused);
        QVERIFY(m_fixture->controller.panelShown());
    }

    void newPressOfUpClosesPanelOnlyFromTop()
    {
        m_fixture->player->setTracks(subtitles);
        m_fixture->tap(Qt::Key_Down);
        QVERIFY(m_fixture->controller.press(Qt::Key_Up, true));
        QVERIFY(m_fixture->controller.panelShown());
        m_fixture->controller.setPanelTopFocused(false);
        QVERIFY(!m_fixture->controller.press(Qt::Key_Up));
        QVERIFY(m_fixture->controller.panelShown());
        m_fixture->controller.setPanelTopFocused(true);
        QVERIFY(m_fixture->controller.press(Qt::Key_Up));
        QVERIFY(!m_fixture->controller.panelShown());
    }

    void trackListsFollowPlayerAndSelectPickedTrack()
    {
        m_fixture->player->setTracks(subtitles);
        QCOMPARE(m_fixture->controller.subtitleTracks()->count(), 2);
        QCOMPARE(m_fixture->controller.audioTracks()->count(), 0);
        m_fixture->controller.subtitleTracks()->pick(1);
        m_fixture->controller.subtitleTracks()->pick(0);
        QCOMPARE(m_fixture->player->selections.size(), 2);
        QCOMPARE(m_fixture->player->selections.first().kind, MediaTrack::Kind::Subtitle);
        QCOMPARE(m_fixture->player->selections.first().id, 1);
        QCOMPARE(m_fixture->player->selections.last().id, MediaTrack::none);
        m_fixture->controller.setPlayer(nullptr);
        QCOMPARE(m_fixture->controller.subtitleTracks()->count(), 0);
        m_fixture->controller.setPlayer(m_fixture->player.get());
        QCOMPARE(m_fixture->controller.subtitleTracks()->count(), 2);
        m_fixture->player.reset();
        m_fixture->controller.subtitleTracks()->pick(0);
    }

private:
    std::optional<PlayerControllerFixture> m_fixture;
};

QUILLMERE_TEST(PlayerControllerPanelTest, QCoreApplication)

} // namespace quillmere

#include "PlayerControllerPanelTest.moc"
