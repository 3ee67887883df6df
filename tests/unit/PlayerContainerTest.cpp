#include "PlayerContainer.h"
#include "PlayerController.h"
#include "ScriptedClock.h"
#include "ScriptedVideoPlayer.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/** The host of one stream's player, with a scripted one. */
class PlayerContainerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void itsItemIsTheStreamWithItsMetadata();
    void itWaitsToMinimizeStalls();
    void madeItPlays_data();
    void madeItPlays();
    void itsControllerDrivesThePlayer();
    void whatBecomesOfItIsToldOn();
    void aKeyThatLeavesIsToldOn();
    void dismantledItTearsDownThenPausesThenLetsGo();
    void dismantledItHasNoPlayer();
    void dismantlingTwiceIsSafe();
    void itIsDismantledWithItsEnd();
    void nothingIsToldOnceItIsDismantled();

private:
    void make(double startAt = 0);

    const QUrl m_url{u"https://hub.example/media/7/index.m3u8"_s};
    const QList<MetadataItem> m_metadata{{MetadataItem::Identifier::Title, u"Harbor Commission"_s}};
    ScriptedClock m_clock;
    QPointer<ScriptedVideoPlayer> m_player;
    std::shared_ptr<const QStringList> m_calls;
    std::unique_ptr<PlayerContainer> m_container;
};

void PlayerContainerTest::init()
{
    m_container.reset();
}

void PlayerContainerTest::make(double startAt)
{
    const auto makePlayer = [this](Clock&) {
        auto player = std::make_shared<ScriptedVideoPlayer>();
        player->setAutomaticallyWaitsToMinimizeStalling(false);
        m_player = player.get();
        m_calls = player->calls();
        return player;
    };
    m_container = std::make_unique<PlayerContainer>(m_url, startAt, m_metadata, m_clock, makePlayer);
}

void PlayerContainerTest::itsItemIsTheStreamWithItsMetadata()
{
    make();
    QCOMPARE(m_player->items.size(), 1);
    QCOMPARE(m_player->item()->url(), m_url);
    QCOMPARE(m_player->item()->externalMetadata(), m_metadata);
    QVERIFY(!m_player->item()->isLive());
}

void PlayerContainerTest::itWaitsToMinimizeStalls()
{
    make();
    QVERIFY(m_player->automaticallyWaitsToMinimizeStalling());
}

void PlayerContainerTest::madeItPlays_data()
{
    QTest::addColumn<double>("startAt");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("from the top") << 1.0 << QStringList{u"setItem"_s, u"play"_s, u"observe"_s};
    QTest::newRow("from where it was left") << 1.5 << QStringList{u"setItem"_s, u"seek"_s, u"observe"_s};
}

void PlayerContainerTest::madeItPlays()
{
    QFETCH(const double, startAt);
    make(startAt);
    QTEST(*m_calls, "calls");
    if (!m_player->seeks.isEmpty())
        QCOMPARE(m_player->seeks.first().seconds, startAt);
}

void PlayerContainerTest::itsControllerDrivesThePlayer()
{
    make();
    QCOMPARE(m_container->player(), m_player.data());
    QCOMPARE(m_container->controller()->player(), m_player.data());
    QCOMPARE(m_container->controller()->title(), u"Harbor Commission"_s);
    m_player->showPicture();
    m_container->controller()->press(Qt::Key_MediaPause);
    QCOMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Paused);
}

void PlayerContainerTest::whatBecomesOfItIsToldOn()
{
    make();
    QSignalSpy progress(m_container.get(), &PlayerContainer::progress);
    QSignalSpy finished(m_container.get(), &PlayerContainer::finished);
    QSignalSpy failure(m_container.get(), &PlayerContainer::failure);
    m_player->showPicture();
    m_player->report(70);
    QCOMPARE(progress, QList<QVariantList>{{70.0}});
    m_player->end();
    QCOMPARE(finished.count(), 1);
    m_player->fail({VideoFailure::Cause::Status, 404, {}});
    QTRY_COMPARE(failure, QList<QVariantList>{{u"The hub answered 404."_s}});
}

void PlayerContainerTest::aKeyThatLeavesIsToldOn()
{
    make();
    QSignalSpy left(m_container.get(), &PlayerContainer::leave);
    m_player->showPicture();
    QVERIFY(m_container->controller()->press(Qt::Key_MediaStop));
    QCOMPARE(left.count(), 1);
}

void PlayerContainerTest::dismantledItTearsDownThenPausesThenLetsGo()
{
    make();
    m_container->dismantle();
    QCOMPARE(m_calls->mid(3), QStringList({u"unobserve"_s, u"pause"_s, u"letGo"_s}));
}

void PlayerContainerTest::dismantledItHasNoPlayer()
{
    make();
    QSignalSpy changed(m_container.get(), &PlayerContainer::playerChanged);
    m_container->dismantle();
    QVERIFY(!m_container->player());
    QVERIFY(!m_player);
    QCOMPARE(changed.count(), 1);
    // What is on the screen still reads it.
    QVERIFY(m_container->controller());
    QVERIFY(!m_container->controller()->player());
}

void PlayerContainerTest::dismantlingTwiceIsSafe()
{
    make();
    QSignalSpy changed(m_container.get(), &PlayerContainer::playerChanged);
    m_container->dismantle();
    m_container->dismantle();
    QCOMPARE(changed.count(), 1);
}

void PlayerContainerTest::itIsDismantledWithItsEnd()
{
    make();
    m_container.reset();
    QVERIFY(!m_player);
    QCOMPARE(m_calls->mid(3), QStringList({u"unobserve"_s, u"pause"_s, u"letGo"_s}));
}

void PlayerContainerTest::nothingIsToldOnceItIsDismantled()
{
    make();
    QSignalSpy progress(m_container.get(), &PlayerContainer::progress);
    QSignalSpy failure(m_container.get(), &PlayerContainer::failure);
    m_player->showPicture();
    const auto item = m_player->item();
    const auto report = m_player->observations.first().callback;
    m_player->fail({});
    m_container->dismantle();
    report(90);
    item->setPlayedToEnd();
    QCoreApplication::processEvents();
    QCOMPARE(progress.count(), 0);
    QCOMPARE(failure.count(), 0);
}

QTEST_GUILESS_MAIN(PlayerContainerTest)
#include "PlayerContainerTest.moc"
