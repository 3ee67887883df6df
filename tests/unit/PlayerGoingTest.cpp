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

/** The player goes at any time, also inside what it tells. */
class PlayerGoingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void destroyingThePlayerEndsItsEngineAndDropsWhatComesLate();
    void destroyingThePlayerWhileThePluginLoadsIsSafe();
    void whatIsToldMayDestroyThePlayer_data();
    void whatIsToldMayDestroyThePlayer();
    void whatIsToldMaySetAnotherItem();
    void whatIsOwedOfAnItemLetGoMeanwhileIsNotTold();
};

void PlayerGoingTest::destroyingThePlayerEndsItsEngineAndDropsWhatComesLate()
{
    StreamOnScript script;
    script.playFrom(0);
    const std::weak_ptr<ScriptedVideoEngine> seen = script.engine;
    script.engine->report([](Listener& to) { to.engineFailed({}); });
    script.player.reset();
    script.engine->report([](Listener& to) { to.engineFailed({}); });
    script.engine.reset();
    QVERIFY(seen.expired());
    script.deliver();
    QCOMPARE(script.item->status(), Status::ReadyToPlay);
    QCOMPARE(script.clock.pendingTimers(), 0);
}

void PlayerGoingTest::destroyingThePlayerWhileThePluginLoadsIsSafe()
{
    StreamOnScript script;
    script.setItem();
    script.player.reset();
    script.arrives.resolve(true);
    script.deliver();
    QCOMPARE(script.plugin.made, 0);
}

void PlayerGoingTest::whatIsToldMayDestroyThePlayer_data()
{
    QTest::addColumn<QByteArray>("signal");
    for (const char* const signal :
         {SIGNAL(itemChanged()), SIGNAL(timeControlChanged()), SIGNAL(waitingChanged()), SIGNAL(positionChanged()),
          SIGNAL(durationChanged()), SIGNAL(bufferedToChanged()), SIGNAL(seekableChanged()), SIGNAL(tracksChanged()),
          SIGNAL(engineChanged()), SIGNAL(rendererReady()), SIGNAL(pictureShown())})
        QTest::newRow(signal) << QByteArray(signal);
    for (const char* const other : {"ready", "failed", "played to the end", "sought", "play time"})
        QTest::newRow(other) << QByteArray(other);
}

// Everything that a player tells in its life; whoever is told destroys it.
void PlayerGoingTest::whatIsToldMayDestroyThePlayer()
{
    QFETCH(const QByteArray, signal);
    StreamOnScript script;
    QObject viewer;
    bool told = false;
    const auto destroy = [&] {
        told = true;
        script.player.reset();
    };
    Destroyer destroyer{destroy};
    if (signal.endsWith(")"))
        connect(script.player.get(), signal, &destroyer, SLOT(destroy()));
    const auto observer = script.player->addPeriodicTimeObserver(10s, [&](double) {
        if (signal == "play time")
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
    then([&] { script.know(120); });
    then([&] { script.tell([load = script.load()](Listener& to) { to.tracksKnown(load, {track}); }); });
    then([&] { script.tell([load = script.load()](Listener& to) { to.seekableKnown(load, true); }); });
    then([&] { script.tell([load = script.load()](Listener& to) { to.dataBuffered(load, 30); }); });
    then([&] { script.show(0); });
    then([&] { script.moveTo(10); });
    then([&] {
        script.player->seek(50, SeekTolerance::AtOrAfter, [&](bool) {
            if (signal == "sought")
                destroy();
        });
    });
    then([&] { script.land(50); });
    then([&] { script.moveTo(120); });
    then([&] { script.endFile(); });
    then([&] { script.player->play(); });
    then([&] { script.tell([](Listener& to) { to.engineFailed({}); }); });
    QVERIFY(told);
    QVERIFY(!script.player);
}

void PlayerGoingTest::whatIsToldMaySetAnotherItem()
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
    script.show(0);
    QCOMPARE(next->status(), Status::ReadyToPlay);
}

void PlayerGoingTest::whatIsOwedOfAnItemLetGoMeanwhileIsNotTold()
{
    StreamOnScript script;
    script.setItem();
    script.start();
    QObject viewer;
    int reports = 0;
    const auto observer = script.player->addPeriodicTimeObserver(10s, [&](double) { ++reports; });
    connect(script.player.get(), &VideoPlayer::pictureShown, &viewer, [&] { script.player->setItem(nullptr); });
    script.show(60);
    QVERIFY(!script.player->item());
    QCOMPARE(reports, 0);
    QCOMPARE(script.item->status(), Status::Unknown);
}

QTEST_GUILESS_MAIN(PlayerGoingTest)
#include "PlayerGoingTest.moc"
