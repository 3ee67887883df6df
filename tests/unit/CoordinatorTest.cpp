#include "Coordinator.h"
#include "ScriptedVideoPlayer.h"

#include <QMetaMethod>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString archived = u"The tape wouldn't play. It may still be being archived."_s;

/** An item that notes which of its signals are no longer listened to, after the latest call to its player. */
class WatchedItem : public PlayerItem
{
public:
    WatchedItem(const QUrl& url, std::shared_ptr<const QStringList> calls, QStringList& log)
        : PlayerItem(url), m_calls(std::move(calls)), m_log(log)
    {}

protected:
    void disconnectNotify(const QMetaMethod& signal) override
    {
        m_log.append(m_calls->last());
        m_log.append(QString::fromLatin1(signal.name()));
    }

private:
    std::shared_ptr<const QStringList> m_calls;
    QStringList& m_log;
};

} // namespace

/** How a playback is started, what is told of it, and how that ends, on a scripted player. */
class CoordinatorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void whatStartsWithinTheFirstSecondStartsAtOnceFromTheTop_data();
    void whatStartsWithinTheFirstSecondStartsAtOnceFromTheTop();
    void whatStartsLaterPlaysOnceItIsThere_data();
    void whatStartsLaterPlaysOnceItIsThere();
    void everyTenSecondsOfPlayAreTold();
    void playingToTheEndIsTold();
    void anItemThatIsReadyIsNoNews();
    void aFailureIsToldFromTheEventLoop();
    void aFailureIsToldWithItsCause_data();
    void aFailureIsToldWithItsCause();
    void thePlayerIsKept();
    void whatWatchesIsRemovedInOrder();
    void tearingDownTwiceIsSafe();
    void whatComesLateIsDropped_data();
    void whatComesLateIsDropped();
    void anEarlierPlayerIsReleased();

private:
    void attach(double startAt = 0);

    std::shared_ptr<ScriptedVideoPlayer> m_player;
    std::shared_ptr<PlayerItem> m_item;
    std::unique_ptr<Coordinator> m_coordinator;
    QStringList m_told;
    QStringList m_log;
};

void CoordinatorTest::init()
{
    m_told.clear();
    m_log.clear();
    m_player = std::make_shared<ScriptedVideoPlayer>();
    m_item = std::make_shared<WatchedItem>(QUrl(u"https://hub.example/media/7/index.m3u8"_s), m_player->calls(), m_log);
    m_player->setItem(m_item);
    m_coordinator = std::make_unique<Coordinator>([this](double seconds) { m_told.append(QString::number(seconds)); },
                                                  [this] { m_told.append(u"finished"_s); },
                                                  [this](const QString& message) { m_told.append(message); });
}

void CoordinatorTest::cleanup()
{
    m_coordinator.reset();
    m_player.reset();
    m_item.reset();
}

void CoordinatorTest::attach(double startAt)
{
    m_coordinator->attach(m_player, *m_item, startAt);
}

void CoordinatorTest::whatStartsWithinTheFirstSecondStartsAtOnceFromTheTop_data()
{
    QTest::addColumn<double>("startAt");
    QTest::newRow("the top") << 0.0;
    QTest::newRow("one second") << 1.0;
    QTest::newRow("before the top") << -5.0;
    QTest::newRow("no number") << qQNaN();
}

void CoordinatorTest::whatStartsWithinTheFirstSecondStartsAtOnceFromTheTop()
{
    QFETCH(const double, startAt);
    attach(startAt);
    QCOMPARE(*m_player->calls(), QStringList({u"setItem"_s, u"play"_s, u"observe"_s}));
}

void CoordinatorTest::whatStartsLaterPlaysOnceItIsThere_data()
{
    QTest::addColumn<bool>("finished");
    QTest::newRow("the seek finished") << true;
    QTest::newRow("the seek was broken off") << false;
}

void CoordinatorTest::whatStartsLaterPlaysOnceItIsThere()
{
    QFETCH(const bool, finished);
    attach(1.5);
    QCOMPARE(*m_player->calls(), QStringList({u"setItem"_s, u"seek"_s, u"observe"_s}));
    QCOMPARE(m_player->seeks.first().seconds, 1.5);
    QCOMPARE(m_player->seeks.first().tolerance, SeekTolerance::AtOrAfter);
    m_player->finishSeek(finished);
    QCOMPARE(m_player->calls()->last(), u"play"_s);
}

void CoordinatorTest::everyTenSecondsOfPlayAreTold()
{
    attach();
    QCOMPARE(m_player->observations.size(), 1);
    QCOMPARE(m_player->observations.first().interval, std::chrono::seconds(10));
    // Without any filtering.
    for (const double seconds : {10.0, 0.0, 20.0, 20.0, 3725.5})
        m_player->report(seconds);
    QCOMPARE(m_told, QStringList({u"10"_s, u"0"_s, u"20"_s, u"20"_s, u"3725.5"_s}));
}

void CoordinatorTest::playingToTheEndIsTold()
{
    attach();
    m_player->end();
    QCOMPARE(m_told, QStringList(u"finished"_s));
}

void CoordinatorTest::anItemThatIsReadyIsNoNews()
{
    attach();
    m_player->showPicture();
    QCOMPARE(m_item->status(), PlayerItem::Status::ReadyToPlay);
    QCoreApplication::processEvents();
    QCOMPARE(m_told, QStringList());
}

void CoordinatorTest::aFailureIsToldFromTheEventLoop()
{
    attach();
    m_player->fail({});
    QCOMPARE(m_told, QStringList());
    QTRY_COMPARE(m_told, QStringList(archived));
}

void CoordinatorTest::aFailureIsToldWithItsCause_data()
{
    QTest::addColumn<VideoFailure>("failure");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown") << VideoFailure{} << archived;
    QTest::newRow("refused") << VideoFailure{VideoFailure::Cause::Refused, 0, {}} << u"The connection was refused."_s;
    QTest::newRow("404") << VideoFailure{VideoFailure::Cause::Status, 404, {}} << u"The hub answered 404."_s;
}

void CoordinatorTest::aFailureIsToldWithItsCause()
{
    QFETCH(const VideoFailure, failure);
    attach();
    m_player->fail(failure);
    QTRY_COMPARE(m_told.size(), 1);
    QTEST(m_told.first(), "message");
}

void CoordinatorTest::thePlayerIsKept()
{
    const std::weak_ptr<VideoPlayer> player = m_player;
    attach();
    m_player.reset();
    QVERIFY(!player.expired());
    m_coordinator->tearDown();
    QVERIFY(player.expired());
}

void CoordinatorTest::whatWatchesIsRemovedInOrder()
{
    connect(m_player.get(), &QObject::destroyed, this, [this] { m_log.append(u"the player is gone"_s); });
    const auto item = m_item; // the player lets go of it
    attach();
    m_player.reset();
    m_coordinator->tearDown();
    QCOMPARE(m_log, QStringList({u"unobserve"_s, u"statusChanged"_s, u"unobserve"_s, u"didPlayToEnd"_s,
                                 u"the player is gone"_s}));
}

void CoordinatorTest::tearingDownTwiceIsSafe()
{
    m_coordinator->tearDown();
    attach();
    m_coordinator->tearDown();
    m_coordinator->tearDown();
    QCOMPARE(m_player->calls()->count(u"unobserve"_s), 1);
}

void CoordinatorTest::whatComesLateIsDropped_data()
{
    QTest::addColumn<bool>("isGone");
    QTest::newRow("torn down") << false;
    QTest::newRow("gone") << true;
}

void CoordinatorTest::whatComesLateIsDropped()
{
    QFETCH(const bool, isGone);
    attach(125);
    // This one is already on its way.
    m_player->fail({});
    if (isGone)
        m_coordinator.reset();
    else
        m_coordinator->tearDown();
    m_player->observations.first().callback(30);
    m_item->setPlayedToEnd();
    m_item->setFailed({});
    const auto calls = *m_player->calls();
    m_player->finishSeek(true);
    QCoreApplication::processEvents();
    QCOMPARE(*m_player->calls(), calls);
    QCOMPARE(m_told, QStringList());
}

void CoordinatorTest::anEarlierPlayerIsReleased()
{
    const std::weak_ptr<VideoPlayer> earlier = m_player;
    const auto earlierItem = m_item;
    attach(125);
    const auto seek = m_player->seeks.first();
    m_player = std::make_shared<ScriptedVideoPlayer>();
    m_item = std::make_shared<PlayerItem>(QUrl(u"https://hub.example/media/8/index.m3u8"_s));
    m_player->setItem(m_item);
    attach(125);
    QVERIFY(earlier.expired());
    seek.done(true);
    QVERIFY(!m_player->calls()->contains(u"play"_s));
    earlierItem->setPlayedToEnd();
    QCOMPARE(m_told, QStringList());
    m_player->end();
    QCOMPARE(m_told, QStringList(u"finished"_s));
}

QTEST_GUILESS_MAIN(CoordinatorTest)
#include "CoordinatorTest.moc"
