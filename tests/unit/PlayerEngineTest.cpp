#include "StreamOnScript.h"

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

/** The engine's coming and going, the player's, and what comes late. */
class PlayerEngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsLoadedBeforeTheFirstItem();
    void aLoadWaitsForTheRenderer();
    void onlyTheLatestOfTwoEarlyItemsIsPlayed();
    void aPluginThatDoesNotLoadFailsTheItemAndIsTriedAgain();
    void anEngineThatDoesNotStartFailsTheItemAndIsTriedAgain();
    void anEngineThatIsLostFailsTheItem_data();
    void anEngineThatIsLostFailsTheItem();
    void reportsOfAnItemThatWasLetGoAreDropped();
    void lettingGoForgetsTheItem();
};

void PlayerEngineTest::nothingIsLoadedBeforeTheFirstItem()
{
    StreamOnScript script;
    script.deliver();
    QCOMPARE(script.pluginLoads, 0);
    script.setItem();
    QCOMPARE(script.pluginLoads, 1);
    QCOMPARE(script.item->status(), Status::Unknown);
    QVERIFY(script.player->isWaiting());
}

void PlayerEngineTest::aLoadWaitsForTheRenderer()
{
    StreamOnScript script;
    QSignalSpy engineChanged(script.player.get(), &VideoPlayer::engineChanged);
    script.setItem();
    script.arrives.resolve(true);
    script.engine = script.plugin.latest.lock();
    QVERIFY(script.engine);
    QVERIFY(!script.player->engine());
    script.tell([](Listener& to) { to.engineReady(); });
    QCOMPARE(engineChanged.count(), 1);
    QCOMPARE(script.player->engine(), script.engine);
    QVERIFY(script.engine->loads.isEmpty());
    script.tell([](Listener& to) { to.rendererReady(); });
    QCOMPARE(script.engine->loads.size(), 1);
    QCOMPARE(script.engine->loads.first().url, script.url);
    QCOMPARE(script.engine->loads.first().startAt, 0.0);
}

void PlayerEngineTest::onlyTheLatestOfTwoEarlyItemsIsPlayed()
{
    StreamOnScript script;
    script.player->setItem(std::make_shared<PlayerItem>(QUrl(u"https://hub.example/other.m3u8"_s)));
    script.setItem();
    script.start();
    QCOMPARE(script.pluginLoads, 1);
    QCOMPARE(script.engine->loads.size(), 1);
    QCOMPARE(script.engine->loads.first().url, script.url);
}

void PlayerEngineTest::aPluginThatDoesNotLoadFailsTheItemAndIsTriedAgain()
{
    StreamOnScript script;
    script.setItem();
    script.arrives.resolve(false);
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(int(script.item->error()->cause), int(Cause::NoPlugin));
    QVERIFY(!script.player->isWaiting());
    script.arrives = {};
    script.setItem();
    script.start();
    QCOMPARE(script.engine->loads.size(), 1);
    QCOMPARE(script.item->status(), Status::Unknown);
}

void PlayerEngineTest::anEngineThatDoesNotStartFailsTheItemAndIsTriedAgain()
{
    StreamOnScript script;
    script.setItem();
    script.arrives.resolve(true);
    script.plugin.latest.lock()->report([](Listener& to) { to.engineFailed({Cause::NoPicture, 0, {}}); });
    script.deliver();
    QCOMPARE(int(script.item->error()->cause), int(Cause::NoPicture));
    QVERIFY(script.plugin.latest.expired());
    script.setItem();
    script.start();
    QCOMPARE(script.plugin.made, 2);
    QCOMPARE(script.engine->loads.size(), 1);
}

void PlayerEngineTest::anEngineThatIsLostFailsTheItem_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::newRow("recording") << Kind::Recording;
    QTest::newRow("live") << Kind::Live;
}

void PlayerEngineTest::anEngineThatIsLostFailsTheItem()
{
    QFETCH(const Kind, kind);
    StreamOnScript script;
    script.playFrom(0, kind);
    script.tell([](Listener& to) { to.engineFailed({Cause::NoPicture, 0, {}}); });
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QVERIFY(!script.player->engine());
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void PlayerEngineTest::reportsOfAnItemThatWasLetGoAreDropped()
{
    StreamOnScript script;
    script.playFrom(0);
    const int before = script.load();
    const auto first = script.item;
    QSignalSpy ended(first.get(), &PlayerItem::didPlayToEnd);
    QSignalSpy changed(first.get(), &PlayerItem::statusChanged);
    script.setItem();
    script.tell([=](Listener& to) {
        to.pictureShown(before, 5);
        to.durationKnown(before, 12);
        to.dataBuffered(before, 12);
        to.seekableKnown(before, true);
        to.tracksKnown(before, {track});
        to.waitingChanged(before, true);
        to.seekDone(before, 1, 7);
        to.positionMoved(before, 11);
        to.endOfFile(before);
        to.loadFailed(before, {});
    });
    QCOMPARE(ended.count() + changed.count(), 0);
    QCOMPARE(script.item->status(), Status::Unknown);
    QCOMPARE(script.player->position(), 0.0);
    QCOMPARE(script.player->duration(), 0.0);
    QVERIFY(script.player->tracks().isEmpty());
    script.show(0);
    QCOMPARE(script.item->status(), Status::ReadyToPlay);
}

void PlayerEngineTest::lettingGoForgetsTheItem()
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

QTEST_GUILESS_MAIN(PlayerEngineTest)
#include "PlayerEngineTest.moc"
