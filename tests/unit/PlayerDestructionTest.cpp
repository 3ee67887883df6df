#include "StreamOnScript.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Cause = VideoFailure::Cause;
using Kind = PlayerItem::Kind;
using Listener = VideoEngineListener;
using Status = PlayerItem::Status;
using TimeControl = VideoPlayer::TimeControl;

namespace {

const MediaTrack track{1, MediaTrack::Kind::Audio, {}, {}, true};

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
    void destroyingPlayerEndsEngineAndIgnoresLateReports();
    void destroyingPlayerWhilePluginLoadsIsSafe();
    void notificationMayDestroyPlayer_data();
    void notificationMayDestroyPlayer();
    void notificationMaySetAnotherItem();
    void pendingNotificationsOfRemovedItemAreDropped();
};

void PlayerDestructionTest::destroyingPlayerEndsEngineAndIgnoresLateReports()
{
    StreamOnScript script;
    script.playFrom(0);
    const std::weak_ptr<ScriptedVideoEngine> seen = script.engine;
    script.engine->report([](Listener& to) { to.onEngineFailed({}); });
    script.player.reset();
    script.engine->report([](Listener& to) { to.onEngineFailed({}); });
    script.engine.reset();
    QVERIFY(seen.expired());
    script.deliver();
    QCOMPARE(script.item->status(), Status::ReadyToPlay);
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void PlayerDestructionTest::destroyingPlayerWhilePluginLoadsIsSafe()
{
    StreamOnScript script;
    script.setItem();
    script.player.reset();
    script.pluginLoaded.resolve(true);
    script.deliver();
    QCOMPARE(script.plugin.createdEngines, 0);
}

void PlayerDestructionTest::notificationMayDestroyPlayer_data()
{
    QTest::addColumn<QByteArray>("signal");
    for (const char* const signal :
         {SIGNAL(itemChanged()), SIGNAL(timeControlChanged()), SIGNAL(waitingChanged()), SIGNAL(positionChanged()),
          SIGNAL(durationChanged()), SIGNAL(bufferedToChanged()), SIGNAL(seekableChanged()), SIGNAL(tracksChanged()),
          SIGNAL(engineChanged()), SIGNAL(rendererReady()), SIGNAL(pictureShown())})
        QTest::newRow(signal) << QByteArray(signal);
    for (const char* const other : {"ready", "failed", "played to the end", "seek finished", "time observed"})
        QTest::newRow(other) << QByteArray(other);
}

// Goes through all notifications of a player's life; the receiver of one of them destroys the player.
void PlayerDestructionTest::notificationMayDestroyPlayer()
{
    QFETCH(const QByteArray, signal);
    StreamOnScript script;
    QObject viewer;
    bool wasNotified = false;
    const auto destroy = [&] {
        wasNotified = true;
        script.player.reset();
    };
    Destroyer destroyer{destroy};
    if (signal.endsWith(")"))
        connect(script.player.get(), signal, &destroyer, SLOT(destroy()));
    const auto observer = script.player->addPeriodicTimeObserver(10s, [&](double) {
        if (signal == "time observed")
            destroy();
    });
    const auto then = [&](auto step) {
        if (script.player)
            step();
    };
    script.item = std::make_shared<PlayerItem>(script.url);
    connect(script.item.get(), &PlayerItem::statusChanged, &viewer, [&, item = script.item.get()] {
        if (signal == (item->status() == Status::Failed ? "failed" : "ready"))
            destroy();
    });
    connect(script.item.get(), &PlayerItem::didPlayToEnd, &viewer, [&] {
        if (signal == "played to the end")
            destroy();
    });
    script.player->setItem(script.item);
    then([&] { script.player->play(); });
    then([&] { script.start(); });
    then([&] { script.reportDuration(120); });
    then([&] { script.notify([load = script.load()](Listener& to) { to.onTracksChanged(load, {track}); }); });
    then([&] { script.notify([load = script.load()](Listener& to) { to.onSeekableKnown(load, true); }); });
    then([&] { script.notify([load = script.load()](Listener& to) { to.onBufferedToChanged(load, 30); }); });
    then([&] { script.showPicture(0); });
    then([&] { script.moveTo(10); });
    then([&] {
        script.player->seek(50, SeekTolerance::AtOrAfter, [&](bool) {
            if (signal == "seek finished")
                destroy();
        });
    });
    then([&] { script.finishSeek(50); });
    then([&] { script.moveTo(120); });
    then([&] { script.endFile(); });
    then([&] { script.player->play(); });
    then([&] { script.notify([](Listener& to) { to.onEngineFailed({}); }); });
    QVERIFY(wasNotified);
    QVERIFY(!script.player);
}

void PlayerDestructionTest::notificationMaySetAnotherItem()
{
    StreamOnScript script;
    script.playFrom(100);
    const auto next = std::make_shared<PlayerItem>(QUrl(u"https://hub.example/next.m3u8"_s));
    QSignalSpy ended(script.item.get(), &PlayerItem::didPlayToEnd);
    QObject viewer;
    connect(script.player.get(), &VideoPlayer::timeControlChanged, &viewer, [&] {
        if (script.player->item() != next)
            script.player->setItem(next);
    });
    connect(script.item.get(), &PlayerItem::didPlayToEnd, &viewer, [&] { script.player->setItem(next); });
    script.moveTo(119);
    script.endFile();
    QCOMPARE(ended.count(), 1);
    QCOMPARE(script.player->item(), next);
    QCOMPARE(script.engine->loads.last().url, next->url());
    script.showPicture(0);
    QCOMPARE(next->status(), Status::ReadyToPlay);
}

void PlayerDestructionTest::pendingNotificationsOfRemovedItemAreDropped()
{
    StreamOnScript script;
    script.setItem();
    script.start();
    QObject viewer;
    int reports = 0;
    const auto observer = script.player->addPeriodicTimeObserver(10s, [&](double) { ++reports; });
    connect(script.player.get(), &VideoPlayer::pictureShown, &viewer, [&] { script.player->setItem(nullptr); });
    script.showPicture(60);
    QVERIFY(!script.player->item());
    QCOMPARE(reports, 0);
    QCOMPARE(script.item->status(), Status::Unknown);
}

QUILLMERE_TEST(PlayerDestructionTest, QCoreApplication)
#include "PlayerDestructionTest.moc"
