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

} // namespace

/** Tests the lifetime of the engine, and reports that arrive after their item was replaced. */
class PlayerEngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pluginIsNotLoadedBeforeFirstItem();
    void loadWaitsForRenderer();
    void onlyLatestOfTwoEarlyItemsIsPlayed();
    void pluginThatFailsToLoadFailsItemAndIsRetried();
    void engineThatFailsToStartFailsItemAndIsRetried();
    void lostEngineFailsItem_data();
    void lostEngineFailsItem();
    void reportsForReplacedItemAreIgnored();
    void removedItemIsReleased();
};

void PlayerEngineTest::pluginIsNotLoadedBeforeFirstItem()
{
    StreamOnScript script;
    script.deliver();
    QCOMPARE(script.pluginLoads, 0);
    script.setItem();
    QCOMPARE(script.pluginLoads, 1);
    QCOMPARE(script.item->status(), Status::Unknown);
    QVERIFY(script.player->isWaiting());
}

void PlayerEngineTest::loadWaitsForRenderer()
{
    StreamOnScript script;
    QSignalSpy engineChanged(script.player.get(), &VideoPlayer::engineChanged);
    script.setItem();
    script.pluginLoaded.resolve(true);
    script.engine = script.plugin.latest.lock();
    QVERIFY(script.engine);
    QVERIFY(!script.player->engine());
    script.notify([](Listener& to) { to.onEngineReady(); });
    QCOMPARE(engineChanged.count(), 1);
    QCOMPARE(script.player->engine(), script.engine);
    QVERIFY(script.engine->loads.isEmpty());
    script.notify([](Listener& to) { to.onRendererReady(); });
    QCOMPARE(script.engine->loads.size(), 1);
    QCOMPARE(script.engine->loads.first().url, script.url);
    QCOMPARE(script.engine->loads.first().startAt, 0.0);
}

void PlayerEngineTest::onlyLatestOfTwoEarlyItemsIsPlayed()
{
    StreamOnScript script;
    script.player->setItem(std::make_shared<PlayerItem>(QUrl(u"https://hub.example/other.m3u8"_s)));
    script.setItem();
    script.start();
    QCOMPARE(script.pluginLoads, 1);
    QCOMPARE(script.engine->loads.size(), 1);
    QCOMPARE(script.engine->loads.first().url, script.url);
}

void PlayerEngineTest::pluginThatFailsToLoadFailsItemAndIsRetried()
{
    StreamOnScript script;
    script.setItem();
    script.pluginLoaded.resolve(false);
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(int(script.item->error()->cause), int(Cause::NoPlugin));
    QVERIFY(!script.player->isWaiting());
    script.pluginLoaded = {};
    script.setItem();
    script.start();
    QCOMPARE(script.engine->loads.size(), 1);
    QCOMPARE(script.item->status(), Status::Unknown);
}

void PlayerEngineTest::engineThatFailsToStartFailsItemAndIsRetried()
{
    StreamOnScript script;
    script.setItem();
    script.pluginLoaded.resolve(true);
    script.plugin.latest.lock()->report([](Listener& to) { to.onEngineFailed({Cause::NoPicture, 0, {}}); });
    script.deliver();
    QCOMPARE(int(script.item->error()->cause), int(Cause::NoPicture));
    QVERIFY(script.plugin.latest.expired());
    script.setItem();
    script.start();
    QCOMPARE(script.plugin.createdEngines, 2);
    QCOMPARE(script.engine->loads.size(), 1);
}

void PlayerEngineTest::lostEngineFailsItem_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::newRow("recording") << Kind::Recording;
    QTest::newRow("live") << Kind::Live;
}

void PlayerEngineTest::lostEngineFailsItem()
{
    QFETCH(const Kind, kind);
    StreamOnScript script;
    script.playFrom(0, kind);
    script.notify([](Listener& to) { to.onEngineFailed({Cause::NoPicture, 0, {}}); });
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QVERIFY(!script.player->engine());
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void PlayerEngineTest::reportsForReplacedItemAreIgnored()
{
    StreamOnScript script;
    script.playFrom(0);
    const int before = script.load();
    const auto first = script.item;
    QSignalSpy ended(first.get(), &PlayerItem::didPlayToEnd);
    QSignalSpy changed(first.get(), &PlayerItem::statusChanged);
    script.setItem();
    script.notify([=](Listener& to) {
        to.onPictureShown(before, 5);
        to.onDurationKnown(before, 12);
        to.onBufferedToChanged(before, 12);
        to.onSeekableKnown(before, true);
        to.onTracksChanged(before, {track});
        to.onWaitingChanged(before, true);
        to.onSeekFinished(before, 1, 7);
        to.onPositionChanged(before, 11);
        to.onEndOfFile(before);
        to.onLoadFailed(before, {});
    });
    QCOMPARE(ended.count() + changed.count(), 0);
    QCOMPARE(script.item->status(), Status::Unknown);
    QCOMPARE(script.player->position(), 0.0);
    QCOMPARE(script.player->duration(), 0.0);
    QVERIFY(script.player->tracks().isEmpty());
    script.showPicture(0);
    QCOMPARE(script.item->status(), Status::ReadyToPlay);
}

void PlayerEngineTest::removedItemIsReleased()
{
    StreamOnScript script;
    script.playFrom(60);
    const std::weak_ptr<PlayerItem> seen = std::exchange(script.item, {});
    script.player->setItem(nullptr);
    QVERIFY(seen.expired());
    QVERIFY(!script.player->item());
    QCOMPARE(script.engine->stops, 1);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QCOMPARE(script.player->position(), 0.0);
    QCOMPARE(script.clock.pendingTimers(), 0);
}

QUILLMERE_TEST(PlayerEngineTest, QCoreApplication)
#include "PlayerEngineTest.moc"
