#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

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
    StreamPlayerFixture fixture;
    fixture.deliver();
    QCOMPARE(fixture.pluginLoads, 0);
    fixture.setItem();
    QCOMPARE(fixture.pluginLoads, 1);
    QCOMPARE(fixture.item->status(), Status::Unknown);
    QVERIFY(fixture.player->isWaiting());
}

void PlayerEngineTest::loadWaitsForRenderer()
{
    StreamPlayerFixture fixture;
    QSignalSpy engineChanged(fixture.player.get(), &VideoPlayer::engineChanged);
    fixture.setItem();
    fixture.pluginLoaded.resolve(true);
    fixture.engine = fixture.plugin.latest.lock();
    QVERIFY(fixture.engine);
    QVERIFY(!fixture.player->engine());
    fixture.notify([](Listener& to) { to.onEngineReady(); });
    QCOMPARE(engineChanged.count(), 1);
    QCOMPARE(fixture.player->engine(), fixture.engine);
    QVERIFY(fixture.engine->loads.isEmpty());
    fixture.notify([](Listener& to) { to.onRendererReady(); });
    QCOMPARE(fixture.engine->loads.size(), 1);
    QCOMPARE(fixture.engine->loads.first().url, fixture.url);
    QCOMPARE(fixture.engine->loads.first().startAt, 0.0);
}

void PlayerEngineTest::onlyLatestOfTwoEarlyItemsIsPlayed()
{
    StreamPlayerFixture fixture;
    fixture.player->setItem(std::make_shared<PlayerItem>(QUrl(u"https://hub.example/other.m3u8"_s)));
    fixture.setItem();
    fixture.start();
    QCOMPARE(fixture.pluginLoads, 1);
    QCOMPARE(fixture.engine->loads.size(), 1);
    QCOMPARE(fixture.engine->loads.first().url, fixture.url);
}

void PlayerEngineTest::pluginThatFailsToLoadFailsItemAndIsRetried()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.pluginLoaded.resolve(false);
    QCOMPARE(fixture.item->status(), Status::Failed);
    QCOMPARE(int(fixture.item->error()->cause), int(Cause::NoPlugin));
    QVERIFY(!fixture.player->isWaiting());
    fixture.pluginLoaded = {};
    fixture.setItem();
    fixture.start();
    QCOMPARE(fixture.engine->loads.size(), 1);
    QCOMPARE(fixture.item->status(), Status::Unknown);
}

void PlayerEngineTest::engineThatFailsToStartFailsItemAndIsRetried()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.pluginLoaded.resolve(true);
    fixture.plugin.latest.lock()->report([](Listener& to) { to.onEngineFailed({Cause::NoPicture, 0, {}}); });
    fixture.deliver();
    QCOMPARE(int(fixture.item->error()->cause), int(Cause::NoPicture));
    QVERIFY(fixture.plugin.latest.expired());
    fixture.setItem();
    fixture.start();
    QCOMPARE(fixture.plugin.createdEngines, 2);
    QCOMPARE(fixture.engine->loads.size(), 1);
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
    StreamPlayerFixture fixture;
    fixture.playFrom(0, kind);
    fixture.notify([](Listener& to) { to.onEngineFailed({Cause::NoPicture, 0, {}}); });
    QCOMPARE(fixture.item->status(), Status::Failed);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QVERIFY(!fixture.player->engine());
    QCOMPARE(fixture.clock.pendingTimers(), 0);
}

void PlayerEngineTest::reportsForReplacedItemAreIgnored()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    const int before = fixture.load();
    const auto first = fixture.item;
    QSignalSpy ended(first.get(), &PlayerItem::didPlayToEnd);
    QSignalSpy changed(first.get(), &PlayerItem::statusChanged);
    fixture.setItem();
    fixture.notify([=](Listener& to) {
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
    QCOMPARE(fixture.item->status(), Status::Unknown);
    QCOMPARE(fixture.player->position(), 0.0);
    QCOMPARE(fixture.player->duration(), 0.0);
    QVERIFY(fixture.player->tracks().isEmpty());
    fixture.showPicture(0);
    QCOMPARE(fixture.item->status(), Status::ReadyToPlay);
}

void PlayerEngineTest::removedItemIsReleased()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(60);
    const std::weak_ptr<PlayerItem> seen = std::exchange(fixture.item, {});
    fixture.player->setItem(nullptr);
    QVERIFY(seen.expired());
    QVERIFY(!fixture.player->item());
    QCOMPARE(fixture.engine->stops, 1);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QCOMPARE(fixture.player->position(), 0.0);
    QCOMPARE(fixture.clock.pendingTimers(), 0);
}

QUILLMERE_TEST(PlayerEngineTest, QCoreApplication)

} // namespace quillmere

#include "PlayerEngineTest.moc"
