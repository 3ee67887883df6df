#include "PlayerContainer.h"
#include "PlayerController.h"
#include "ScriptedClock.h"
#include "ScriptedVideoPlayer.h"
#include "TestMain.h"

#include <QPointer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the owner of one stream's player, with a scripted player. */
class PlayerContainerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void playerItemHasStreamAndMetadata();
    void playerWaitsToMinimizeStalls();
    void newContainerStartsPlaying_data();
    void newContainerStartsPlaying();
    void controllerControlsPlayer();
    void playbackEventsCallActions();
    void stopKeyCallsOnDismiss();
    void tearDownStopsObservingThenPausesThenReleasesItem();
    void tornDownContainerHasNoPlayer();
    void secondTearDownDoesNothing();
    void destroyedContainerIsTornDown();
    void noActionIsCalledAfterTearDown();

private:
    void create(double startAt = 0);

    const QUrl m_url{u"https://hub.example/media/7/index.m3u8"_s};
    const QList<MetadataItem> m_metadata{{MetadataItem::Identifier::Title, u"Harbor Commission"_s}};
    ScriptedClock m_clock;
    QPointer<ScriptedVideoPlayer> m_player;
    std::shared_ptr<const QStringList> m_calls;
    QList<double> m_progress;
    int m_finished = 0;
    QStringList m_failures;
    int m_dismissals = 0;
    std::unique_ptr<PlayerContainer> m_container;
};

void PlayerContainerTest::init()
{
    m_container.reset();
    m_progress.clear();
    m_finished = 0;
    m_failures.clear();
    m_dismissals = 0;
}

void PlayerContainerTest::create(double startAt)
{
    const auto createPlayer = [this](Clock&) {
        auto player = std::make_shared<ScriptedVideoPlayer>();
        player->setAutomaticallyWaitsToMinimizeStalling(false);
        m_player = player.get();
        m_calls = player->calls();
        return player;
    };
    const PlayerContainer::Actions actions{
        [this](double seconds) { m_progress.append(seconds); },
        [this] { ++m_finished; },
        [this](const QString& message) { m_failures.append(message); },
        [this] { ++m_dismissals; },
    };
    m_container = std::make_unique<PlayerContainer>(m_url, startAt, m_metadata, actions, m_clock, createPlayer);
}

void PlayerContainerTest::playerItemHasStreamAndMetadata()
{
    create();
    QCOMPARE(m_player->items.size(), 1);
    QCOMPARE(m_player->item()->url(), m_url);
    QCOMPARE(m_player->item()->externalMetadata(), m_metadata);
    QVERIFY(!m_player->item()->isLive());
}

void PlayerContainerTest::playerWaitsToMinimizeStalls()
{
    create();
    QVERIFY(m_player->automaticallyWaitsToMinimizeStalling());
}

void PlayerContainerTest::newContainerStartsPlaying_data()
{
    QTest::addColumn<double>("startAt");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("from the start") << 1.0 << QStringList{u"setItem"_s, u"play"_s, u"observe"_s};
    QTest::newRow("from the resume position") << 1.5 << QStringList{u"setItem"_s, u"seek"_s, u"observe"_s};
}

void PlayerContainerTest::newContainerStartsPlaying()
{
    QFETCH(const double, startAt);
    create(startAt);
    QTEST(*m_calls, "calls");
    if (!m_player->seeks.isEmpty())
        QCOMPARE(m_player->seeks.first().seconds, startAt);
}

void PlayerContainerTest::controllerControlsPlayer()
{
    create();
    QCOMPARE(m_container->player(), m_player.data());
    QCOMPARE(m_container->controller()->player(), m_player.data());
    QCOMPARE(m_container->controller()->title(), u"Harbor Commission"_s);
    m_player->showPicture();
    m_container->controller()->press(Qt::Key_MediaPause);
    QCOMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Paused);
}

void PlayerContainerTest::playbackEventsCallActions()
{
    create();
    m_player->showPicture();
    m_player->report(70);
    QCOMPARE(m_progress, QList<double>{70.0});
    m_player->end();
    QCOMPARE(m_finished, 1);
    m_player->fail({VideoFailure::Cause::Status, 404, {}});
    QTRY_COMPARE(m_failures, QStringList{u"The hub answered 404."_s});
}

void PlayerContainerTest::stopKeyCallsOnDismiss()
{
    create();
    m_player->showPicture();
    QVERIFY(m_container->controller()->press(Qt::Key_MediaStop));
    QCOMPARE(m_dismissals, 1);
}

void PlayerContainerTest::tearDownStopsObservingThenPausesThenReleasesItem()
{
    create();
    m_container->tearDown();
    QCOMPARE(m_calls->mid(3), QStringList({u"unobserve"_s, u"pause"_s, u"clearItem"_s}));
}

void PlayerContainerTest::tornDownContainerHasNoPlayer()
{
    create();
    QCOMPARE(m_container->tearDown().get(), m_player.data());
    QVERIFY(!m_container->player());
    QVERIFY(!m_player);
    // The screen still reads the controller.
    QVERIFY(m_container->controller());
    QVERIFY(!m_container->controller()->player());
}

void PlayerContainerTest::secondTearDownDoesNothing()
{
    create();
    m_container->tearDown();
    QVERIFY(!m_container->tearDown());
}

void PlayerContainerTest::destroyedContainerIsTornDown()
{
    create();
    m_container.reset();
    QVERIFY(!m_player);
    QCOMPARE(m_calls->mid(3), QStringList({u"unobserve"_s, u"pause"_s, u"clearItem"_s}));
}

void PlayerContainerTest::noActionIsCalledAfterTearDown()
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
    QVERIFY(m_progress.isEmpty());
    QCOMPARE(m_finished, 0);
    QVERIFY(m_failures.isEmpty());
}

QUILLMERE_TEST(PlayerContainerTest, QCoreApplication)

} // namespace quillmere

#include "PlayerContainerTest.moc"
