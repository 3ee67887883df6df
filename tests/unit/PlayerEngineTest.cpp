#include "Rows.h"
#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the lifetime of the engine, and reports that arrive after their item was replaced. */
class PlayerEngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pluginIsLoadedForFirstItemWhichWaitsForRenderer()
    {
        StreamPlayerFixture fixture;
        fixture.deliver();
        QCOMPARE(fixture.pluginLoads, 0);
        QSignalSpy engineChanged(fixture.player.get(), &VideoPlayer::engineChanged);
        fixture.setItem();
        QCOMPARE(fixture.pluginLoads, 1);
        QCOMPARE(fixture.item->status(), Status::Unknown);
        QVERIFY(fixture.player->isWaiting());
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

    void onlyLatestOfTwoEarlyItemsIsPlayed()
    {
        StreamPlayerFixture fixture;
        fixture.player->setItem(std::make_shared<PlayerItem>(QUrl(u"https://hub.example/other.m3u8"_s)));
        fixture.setItem();
        fixture.start();
        QCOMPARE(fixture.pluginLoads, 1);
        QCOMPARE(fixture.engine->loads.size(), 1);
        QCOMPARE(fixture.engine->loads.first().url, fixture.url);
    }

    void pluginThatFailsToLoadFailsItemAndIsRetried()
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

    void engineThatFailsToStartFailsItemAndIsRetried()
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

    void lostEngineFailsItem_data() { rows<Kind>({"kind"}, {{"recording", Kind::Recording}, {"live", Kind::Live}}); }
    void lostEngineFailsItem()
    {
        QFETCH(const Kind, kind);
        PlayingFixture fixture(0, kind);
        fixture.notify([](Listener& to) { to.onEngineFailed({Cause::NoPicture, 0, {}}); });
        QCOMPARE(fixture.item->status(), Status::Failed);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
        QVERIFY(!fixture.player->engine());
        QCOMPARE(fixture.clock.pendingTimers(), 0);
    }

    void reportsForReplacedItemAreIgnored()
    {
        PlayingFixture fixture(0);
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
            to.onTracksChanged(before, {audioTrack});
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

    void removedItemIsReleased()
    {
        PlayingFixture fixture(60);
        const std::weak_ptr<PlayerItem> seen = std::exchange(fixture.item, {});
        fixture.player->setItem(nullptr);
        QVERIFY(seen.expired());
        QVERIFY(!fixture.player->item());
        QCOMPARE(fixture.engine->stops, 1);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
        QCOMPARE(fixture.player->position(), 0.0);
        QCOMPARE(fixture.clock.pendingTimers(), 0);
    }
};

QUILLMERE_TEST(PlayerEngineTest, QCoreApplication)

} // namespace quillmere

#include "PlayerEngineTest.moc"
