#include "StreamPlayer.h"
#include "ScriptedVideoPlugin.h"

#include "Completion.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using Cause = VideoFailure::Cause;
using Listener = VideoEngineListener;
using State = VideoPlayer::State;

/** The rules of playing, on an engine that does what the test says. */
class StreamPlayerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void nothingIsLoadedBeforeTheFirstPlayback();
    void aLoadWaitsForTheRenderer();
    void onlyTheLatestOfTwoEarlyLoadsIsPlayed();
    void aPluginThatDoesNotLoadIsAFailureAndIsTriedAgain();
    void anEngineThatDoesNotStartIsAFailureAndIsTriedAgain();
    void anEngineThatIsLostWhilePlayingIsAFailure();
    void theFirstPictureComesBeforeAnyPosition();
    void theEndIsBelievedNearTheDuration_data();
    void theEndIsBelievedNearTheDuration();
    void aFailureWhileLoadingKeepsItsCause();
    void reportsOfAnEarlierLoadAreDropped();
    void reportsAfterTheEndAreDropped();
    void pausingWhileLoadingHoldsTheFirstPicture();
    void stoppingLetsGoOfTheStream();
    void aStartThatIsNoNumberIsTheTop_data();
    void aStartThatIsNoNumberIsTheTop();
    void destroyingThePlayerEndsItsEngineAndDropsWhatComesLate();
    void destroyingThePlayerWhileThePluginLoadsIsSafe();

private:
    StreamPlayer::LoadPlugin loadPlugin()
    {
        return [this] { return loadOnce(); };
    }
    QCoro::Task<tl::expected<VideoPlugin*, QString>> loadOnce()
    {
        ++m_loads;
        const Completion<bool> arrives = m_arrives;
        if (co_await arrives)
            co_return &m_plugin;
        co_return tl::unexpected(u"not there"_s);
    }
    std::shared_ptr<ScriptedVideoEngine> start(StreamPlayer& player);
    static void deliver() { QCoreApplication::processEvents(); }

    ScriptedVideoPlugin m_plugin;
    Completion<bool> m_arrives;
    int m_loads = 0;
    const QUrl m_url{u"https://hub.example/tape.m3u8"_s};
};

void StreamPlayerTest::init()
{
    m_plugin = {};
    m_arrives = {};
    m_loads = 0;
}

// A plug-in that still comes finds its player gone, and no coroutine is left waiting for it.
void StreamPlayerTest::cleanup()
{
    m_arrives.resolve(false);
}

// Loads the stream and brings the engine to the point where it was told to play.
std::shared_ptr<ScriptedVideoEngine> StreamPlayerTest::start(StreamPlayer& player)
{
    player.load(m_url);
    m_arrives.resolve(true);
    auto engine = m_plugin.latest.lock();
    engine->report([](Listener& to) { to.engineReady(); });
    engine->report([](Listener& to) { to.rendererReady(); });
    deliver();
    return engine;
}

void StreamPlayerTest::nothingIsLoadedBeforeTheFirstPlayback()
{
    StreamPlayer player({}, loadPlugin());
    deliver();
    QCOMPARE(m_loads, 0);
    player.load(m_url);
    QCOMPARE(m_loads, 1);
    QCOMPARE(player.state(), State::Loading);
}

void StreamPlayerTest::aLoadWaitsForTheRenderer()
{
    StreamPlayer player({}, loadPlugin());
    QSignalSpy engineChanged(&player, &VideoPlayer::engineChanged);
    player.load(m_url, 125);
    m_arrives.resolve(true);
    const auto engine = m_plugin.latest.lock();
    QVERIFY(engine);
    QVERIFY(!player.engine());
    engine->report([](Listener& to) { to.engineReady(); });
    deliver();
    QCOMPARE(engineChanged.count(), 1);
    QCOMPARE(player.engine(), engine);
    QVERIFY(engine->loads.isEmpty());
    engine->report([](Listener& to) { to.rendererReady(); });
    deliver();
    QCOMPARE(engine->loads.size(), 1);
    QCOMPARE(engine->loads.first().url, m_url);
    QCOMPARE(engine->loads.first().startAt, 125.0);
}

void StreamPlayerTest::onlyTheLatestOfTwoEarlyLoadsIsPlayed()
{
    StreamPlayer player({}, loadPlugin());
    player.load(QUrl(u"https://hub.example/other.m3u8"_s));
    const auto engine = start(player);
    QCOMPARE(m_loads, 1);
    QCOMPARE(engine->loads.size(), 1);
    QCOMPARE(engine->loads.first().url, m_url);
}

void StreamPlayerTest::aPluginThatDoesNotLoadIsAFailureAndIsTriedAgain()
{
    StreamPlayer player({}, loadPlugin());
    QSignalSpy failed(&player, &VideoPlayer::failed);
    player.load(m_url);
    m_arrives.resolve(false);
    QCOMPARE(failed.count(), 1);
    QCOMPARE(int(failed.first().first().value<VideoFailure>().cause), int(Cause::NoPlugin));
    QCOMPARE(player.state(), State::Failed);
    m_arrives = {};
    const auto engine = start(player);
    QCOMPARE(engine->loads.size(), 1);
    QCOMPARE(player.state(), State::Loading);
}

void StreamPlayerTest::anEngineThatDoesNotStartIsAFailureAndIsTriedAgain()
{
    StreamPlayer player({}, loadPlugin());
    QSignalSpy failed(&player, &VideoPlayer::failed);
    player.load(m_url);
    m_arrives.resolve(true);
    m_plugin.latest.lock()->report([](Listener& to) { to.engineFailed({Cause::NoPicture, 0, {}}); });
    deliver();
    QCOMPARE(int(failed.first().first().value<VideoFailure>().cause), int(Cause::NoPicture));
    QVERIFY(m_plugin.latest.expired());
    const auto engine = start(player);
    QCOMPARE(m_plugin.made, 2);
    QCOMPARE(engine->loads.size(), 1);
}

void StreamPlayerTest::anEngineThatIsLostWhilePlayingIsAFailure()
{
    StreamPlayer player({}, loadPlugin());
    QSignalSpy failed(&player, &VideoPlayer::failed);
    const auto engine = start(player);
    engine->report([](Listener& to) { to.pictureShown(1); });
    deliver();
    QCOMPARE(player.state(), State::Playing);
    engine->report([](Listener& to) { to.engineFailed({Cause::NoPicture, 0, {}}); });
    deliver();
    QCOMPARE(failed.count(), 1);
    QCOMPARE(player.state(), State::Failed);
    QVERIFY(!player.engine());
}

void StreamPlayerTest::theFirstPictureComesBeforeAnyPosition()
{
    StreamPlayer player({}, loadPlugin());
    const auto engine = start(player);
    QSignalSpy moved(&player, &VideoPlayer::positionChanged);
    engine->report([](Listener& to) { to.positionMoved(1, 0); });
    engine->report([](Listener& to) { to.positionMoved(1, 1200); });
    deliver();
    QCOMPARE(moved.count(), 0);
    QCOMPARE(player.position(), 0.0);
    engine->report([](Listener& to) { to.pictureShown(1); });
    engine->report([](Listener& to) { to.positionMoved(1, 1200.5); });
    deliver();
    QCOMPARE(player.state(), State::Playing);
    QCOMPARE(player.position(), 1200.5);
}

void StreamPlayerTest::theEndIsBelievedNearTheDuration_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("duration");
    QTest::addColumn<bool>("byError");
    QTest::addColumn<bool>("believed");
    QTest::newRow("at the end") << 120.0 << 120.0 << false << true;
    QTest::newRow("two seconds before") << 118.0 << 120.0 << false << true;
    QTest::newRow("a little more than that") << 117.99 << 120.0 << false << false;
    QTest::newRow("in the middle") << 57.0 << 120.0 << false << false;
    QTest::newRow("past the end") << 121.0 << 120.0 << false << true;
    QTest::newRow("no duration") << 57.0 << 0.0 << false << false;
    QTest::newRow("by an error at the end") << 119.9 << 120.0 << true << true;
    QTest::newRow("by an error in the middle") << 57.0 << 120.0 << true << false;
}

void StreamPlayerTest::theEndIsBelievedNearTheDuration()
{
    QFETCH(const double, position);
    QFETCH(const double, duration);
    QFETCH(const bool, byError);
    QFETCH(const bool, believed);
    StreamPlayer player({}, loadPlugin());
    QSignalSpy ended(&player, &VideoPlayer::ended);
    QSignalSpy failed(&player, &VideoPlayer::failed);
    const auto engine = start(player);
    engine->report([=](Listener& to) {
        to.durationKnown(1, duration);
        to.pictureShown(1);
        to.positionMoved(1, position);
        if (byError)
            to.loadFailed(1, {Cause::Status, 500, {}});
        else
            to.endOfFile(1);
    });
    deliver();
    QCOMPARE(ended.count(), believed ? 1 : 0);
    QCOMPARE(failed.count(), believed ? 0 : 1);
    QCOMPARE(player.state(), believed ? State::Ended : State::Failed);
    if (!believed)
        QCOMPARE(int(failed.first().first().value<VideoFailure>().cause), int(Cause::BrokenStream));
}

void StreamPlayerTest::aFailureWhileLoadingKeepsItsCause()
{
    StreamPlayer player({}, loadPlugin());
    QSignalSpy failed(&player, &VideoPlayer::failed);
    const auto engine = start(player);
    engine->report([](Listener& to) { to.loadFailed(1, {Cause::Status, 404, u"why"_s}); });
    deliver();
    const auto failure = failed.first().first().value<VideoFailure>();
    QCOMPARE(int(failure.cause), int(Cause::Status));
    QCOMPARE(failure.httpStatus, 404);
    QCOMPARE(failure.description, u"why"_s);
}

void StreamPlayerTest::reportsOfAnEarlierLoadAreDropped()
{
    StreamPlayer player({}, loadPlugin());
    QSignalSpy failed(&player, &VideoPlayer::failed);
    const auto engine = start(player);
    player.load(m_url, 60);
    QCOMPARE(engine->loads.size(), 2);
    engine->report([](Listener& to) {
        to.pictureShown(1);
        to.durationKnown(1, 12);
        to.waitingChanged(1, true);
        to.loadFailed(1, {});
        to.endOfFile(1);
    });
    deliver();
    QCOMPARE(player.state(), State::Loading);
    QCOMPARE(player.duration(), 0.0);
    QVERIFY(!player.isWaiting());
    QCOMPARE(failed.count(), 0);
    engine->report([](Listener& to) { to.pictureShown(2); });
    deliver();
    QCOMPARE(player.state(), State::Playing);
}

void StreamPlayerTest::reportsAfterTheEndAreDropped()
{
    StreamPlayer player({}, loadPlugin());
    QSignalSpy failed(&player, &VideoPlayer::failed);
    const auto engine = start(player);
    engine->report([](Listener& to) { to.loadFailed(1, {}); });
    engine->report([](Listener& to) { to.loadFailed(1, {}); });
    engine->report([](Listener& to) { to.positionMoved(1, 5); });
    deliver();
    QCOMPARE(failed.count(), 1);
    QCOMPARE(player.position(), 0.0);
}

void StreamPlayerTest::pausingWhileLoadingHoldsTheFirstPicture()
{
    StreamPlayer player({}, loadPlugin());
    player.pause();
    const auto engine = start(player);
    QCOMPARE(engine->pauses, QList<bool>{true});
    engine->report([](Listener& to) { to.pictureShown(1); });
    deliver();
    QCOMPARE(player.state(), State::Paused);
    player.play();
    QCOMPARE(player.state(), State::Playing);
    QCOMPARE(engine->pauses, (QList<bool>{true, false}));
}

void StreamPlayerTest::stoppingLetsGoOfTheStream()
{
    StreamPlayer player({}, loadPlugin());
    const auto engine = start(player);
    engine->report([](Listener& to) {
        to.pictureShown(1);
        to.positionMoved(1, 5);
    });
    deliver();
    player.stop();
    QCOMPARE(engine->stops, 1);
    QCOMPARE(player.state(), State::Idle);
    QCOMPARE(player.position(), 0.0);
    engine->report([](Listener& to) { to.endOfFile(1); });
    deliver();
    QCOMPARE(player.state(), State::Idle);
}

void StreamPlayerTest::aStartThatIsNoNumberIsTheTop_data()
{
    QTest::addColumn<double>("start");
    QTest::newRow("negative") << -3.0;
    QTest::newRow("not a number") << qQNaN();
    QTest::newRow("infinite") << qInf();
}

void StreamPlayerTest::aStartThatIsNoNumberIsTheTop()
{
    QFETCH(const double, start);
    StreamPlayer player({}, loadPlugin());
    const auto engine = this->start(player);
    player.load(m_url, start);
    QCOMPARE(engine->loads.last().startAt, 0.0);
}

void StreamPlayerTest::destroyingThePlayerEndsItsEngineAndDropsWhatComesLate()
{
    auto player = std::make_unique<StreamPlayer>(VideoOptions{}, loadPlugin());
    auto engine = start(*player);
    const std::weak_ptr<ScriptedVideoEngine> seen = engine;
    engine->report([](Listener& to) { to.pictureShown(1); });
    player.reset();
    engine->report([](Listener& to) { to.endOfFile(1); });
    engine.reset();
    QVERIFY(seen.expired());
    deliver();
}

void StreamPlayerTest::destroyingThePlayerWhileThePluginLoadsIsSafe()
{
    auto player = std::make_unique<StreamPlayer>(VideoOptions{}, loadPlugin());
    player->load(m_url);
    player.reset();
    m_arrives.resolve(true);
    deliver();
    QCOMPARE(m_plugin.made, 0);
}

QTEST_GUILESS_MAIN(StreamPlayerTest)
#include "StreamPlayerTest.moc"
