#include "PlayerContainer.h"
#include "PlayerController.h"
#include "Rows.h"
#include "ScriptedClock.h"
#include "ScriptedVideoPlayer.h"
#include "TestMain.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the owner of one stream's player, with a scripted player. */
class PlayerContainerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_container.reset();
        m_events.clear();
    }

    void newPlayerHasStreamAndMetadataAndMinimizesStalls()
    {
        create();
        QCOMPARE(m_player->items.size(), 1);
        QCOMPARE(m_player->item()->url(), m_url);
        QCOMPARE(m_player->item()->externalMetadata(), m_metadata);
        QVERIFY(!m_player->item()->isLive());
        QVERIFY(m_player->automaticallyWaitsToMinimizeStalling());
    }

    void newContainerStartsPlaying_data()
    {
        rows<double, QStringList>({"startAt", "calls"},
                                  {{"from the start", 1, {u"setItem"_s, u"play"_s, u"observe"_s}},
                                   {"from the resume position", 1.5, {u"setItem"_s, u"seek"_s, u"observe"_s}}});
    }

    void newContainerStartsPlaying()
    {
        QFETCH(const double, startAt);
        create(startAt);
        QTEST(*m_calls, "calls");
        if (!m_player->seeks.isEmpty())
            QCOMPARE(m_player->seeks.first().seconds, startAt);
    }

    void controllerControlsPlayerAndStopKeyDismisses()
    {
        create();
        QCOMPARE(m_container->player(), m_player.data());
        QCOMPARE(m_container->controller()->player(), m_player.data());
        QCOMPARE(m_container->controller()->title(), u"Harbor Commission"_s);
        m_player->showPicture();
        m_container->controller()->press(Qt::Key_MediaPause);
        QCOMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Paused);
        QVERIFY(m_container->controller()->press(Qt::Key_MediaStop));
        QCOMPARE(m_events, QStringList{u"dismiss"_s});
    }

    void playbackEventsCallActions()
    {
        create();
        m_player->showPicture();
        m_player->report(70);
        QCOMPARE(m_events, QStringList{u"70"_s});
        m_player->end();
        QCOMPARE(m_events, (QStringList{u"70"_s, u"finished"_s}));
        m_player->fail({VideoFailure::Cause::Status, 404, {}});
        QTRY_COMPARE(m_events, (QStringList{u"70"_s, u"finished"_s, u"The hub answered 404."_s}));
    }

    void tearDownStopsObservingThenPausesThenReleasesPlayer()
    {
        create();
        QCOMPARE(m_container->tearDown().get(), m_player.data());
        QCOMPARE(m_calls->mid(3), QStringList({u"unobserve"_s, u"pause"_s, u"clearItem"_s}));
        QVERIFY(!m_container->player());
        QVERIFY(!m_player);
        // The screen still reads the controller.
        QVERIFY(m_container->controller());
        QVERIFY(!m_container->controller()->player());
        QVERIFY(!m_container->tearDown());
    }

    void destroyedContainerIsTornDown()
    {
        create();
        m_container.reset();
        QVERIFY(!m_player);
        QCOMPARE(m_calls->mid(3), QStringList({u"unobserve"_s, u"pause"_s, u"clearItem"_s}));
    }

    void noActionIsCalledAfterTearDown()
    {
        create();
        m_player->showPicture();
        const auto item = m_player->item();
        const auto report = m_player->observations.first().callback;
        m_player->fail({});
        m_container->tearDown();
        report(90);
        item->setPlayedToEnd();
        QCoreApplication::processEvents();
        QCOMPARE(m_events, QStringList());
    }

private:
    void create(double startAt = 0)
    {
        const auto createPlayer = [this](Clock&) {
            auto player = std::make_shared<ScriptedVideoPlayer>();
            player->setAutomaticallyWaitsToMinimizeStalling(false);
            m_player = player.get();
            m_calls = player->calls();
            return player;
        };
        const PlayerContainer::Actions actions{
            [this](double seconds) { m_events.append(QString::number(seconds)); },
            [this] { m_events.append(u"finished"_s); },
            [this](const QString& message) { m_events.append(message); },
            [this] { m_events.append(u"dismiss"_s); },
        };
        m_container = std::make_unique<PlayerContainer>(m_url, startAt, m_metadata, actions, m_clock, createPlayer);
    }

    const QUrl m_url{u"https://hub.example/media/7/index.m3u8"_s};
    const QList<MetadataItem> m_metadata{{MetadataItem::Identifier::Title, u"Harbor Commission"_s}};
    ScriptedClock m_clock;
    QPointer<ScriptedVideoPlayer> m_player;
    std::shared_ptr<const QStringList> m_calls;
    QStringList m_events;
    std::unique_ptr<PlayerContainer> m_container;
};

QUILLMERE_TEST(PlayerContainerTest, QCoreApplication)

} // namespace quillmere

#include "PlayerContainerTest.moc"
