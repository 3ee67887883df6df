#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

class Destroyer : public QObject
{
    Q_OBJECT

public:
    explicit Destroyer(std::function<void()> what) : m_what(std::move(what)) {}

public Q_SLOTS:
    void destroy() { m_what(); }

private:
    std::function<void()> m_what;
};

} // namespace

/** Tests destroying the player at any time, also inside its own notifications. */
class PlayerDestructionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void destroyingPlayerEndsEngineAndIgnoresLateReports()
    {
        PlayingFixture fixture(0);
        const std::weak_ptr<ScriptedVideoEngine> seen = fixture.engine;
        fixture.engine->report([](Listener& to) { to.onEngineFailed({}); });
        fixture.player.reset();
        fixture.engine->report([](Listener& to) { to.onEngineFailed({}); });
        fixture.engine.reset();
        QVERIFY(seen.expired());
        fixture.deliver();
        QCOMPARE(fixture.item->status(), Status::ReadyToPlay);
        QCOMPARE(fixture.clock.pendingTimers(), 0);
    }

    void destroyingPlayerWhilePluginLoadsIsSafe()
    {
        StreamPlayerFixture fixture;
        fixture.setItem();
        fixture.player.reset();
        fixture.pluginLoaded.resolve(true);
        fixture.deliver();
        QCOMPARE(fixture.plugin.createdEngines, 0);
    }

    void notificationMayDestroyPlayer_data()
    {
        QTest::addColumn<QByteArray>("signal");
        for (const char* const signal :
             {SIGNAL(itemChanged()), SIGNAL(timeControlChanged()), SIGNAL(waitingChanged()), SIGNAL(positionChanged()),
              SIGNAL(durationChanged()), SIGNAL(bufferedToChanged()), SIGNAL(seekableChanged()),
              SIGNAL(tracksChanged()), SIGNAL(engineChanged()), SIGNAL(rendererReady()), SIGNAL(pictureShown())})
            QTest::newRow(signal) << QByteArray(signal);
        for (const char* const other : {"ready", "failed", "played to the end", "seek finished", "time observed"})
            QTest::newRow(other) << QByteArray(other);
    }
    // Goes through all notifications of a player's life; the receiver of one of them destroys the player.
    void notificationMayDestroyPlayer()
    {
        QFETCH(const QByteArray, signal);
        StreamPlayerFixture fixture;
        QObject viewer;
        bool wasNotified = false;
        const auto destroy = [&] {
            wasNotified = true;
            fixture.player.reset();
        };
        const auto onNotification = [&](const char* name) {
            if (signal == name)
                destroy();
        };
        Destroyer destroyer{destroy};
        if (signal.endsWith(")"))
            connect(fixture.player.get(), signal, &destroyer, SLOT(destroy()));
        const auto observer =
            fixture.player->addPeriodicTimeObserver(10s, [&](double) { onNotification("time observed"); });
        const auto then = [&](auto step) {
            if (fixture.player)
                step();
        };
        fixture.item = std::make_shared<PlayerItem>(fixture.url);
        connect(fixture.item.get(), &PlayerItem::statusChanged, &viewer, [&, item = fixture.item.get()] {
            onNotification(item->status() == Status::Failed ? "failed" : "ready");
        });
        connect(fixture.item.get(), &PlayerItem::didPlayToEnd, &viewer, [&] { onNotification("played to the end"); });
        fixture.player->setItem(fixture.item);
        then([&] { fixture.player->play(); });
        then([&] { fixture.start(); });
        then([&] { fixture.reportDuration(120); });
        then([&] { fixture.reportEvent(&Listener::onTracksChanged, {audioTrack}); });
        then([&] { fixture.reportEvent(&Listener::onSeekableKnown, true); });
        then([&] { fixture.reportEvent(&Listener::onBufferedToChanged, 30); });
        then([&] { fixture.showPicture(0); });
        then([&] { fixture.moveTo(10); });
        then([&] {
            fixture.player->seek(50, SeekTolerance::AtOrAfter, [&](bool) { onNotification("seek finished"); });
        });
        then([&] { fixture.finishSeek(50); });
        then([&] { fixture.moveTo(120); });
        then([&] { fixture.endFile(); });
        then([&] { fixture.player->play(); });
        then([&] { fixture.notify([](Listener& to) { to.onEngineFailed({}); }); });
        QVERIFY(wasNotified);
        QVERIFY(!fixture.player);
    }

    void notificationMaySetAnotherItem()
    {
        PlayingFixture fixture(100);
        const auto next = std::make_shared<PlayerItem>(QUrl(u"https://hub.example/next.m3u8"_s));
        QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
        QObject viewer;
        connect(fixture.player.get(), &VideoPlayer::timeControlChanged, &viewer, [&] {
            if (fixture.player->item() != next)
                fixture.player->setItem(next);
        });
        connect(fixture.item.get(), &PlayerItem::didPlayToEnd, &viewer, [&] { fixture.player->setItem(next); });
        fixture.moveTo(119);
        fixture.endFile();
        QCOMPARE(ended.count(), 1);
        QCOMPARE(fixture.player->item(), next);
        QCOMPARE(fixture.engine->loads.last().url, next->url());
        fixture.showPicture(0);
        QCOMPARE(next->status(), Status::ReadyToPlay);
    }

    void pendingNotificationsOfRemovedItemAreDropped()
    {
        LoadingFixture fixture;
        QObject viewer;
        int reports = 0;
        const auto observer = fixture.player->addPeriodicTimeObserver(10s, [&](double) { ++reports; });
        connect(fixture.player.get(), &VideoPlayer::pictureShown, &viewer, [&] { fixture.player->setItem(nullptr); });
        fixture.showPicture(60);
        QVERIFY(!fixture.player->item());
        QCOMPARE(reports, 0);
        QCOMPARE(fixture.item->status(), Status::Unknown);
    }
};

QUILLMERE_TEST(PlayerDestructionTest, QCoreApplication)

} // namespace quillmere

#include "PlayerDestructionTest.moc"
