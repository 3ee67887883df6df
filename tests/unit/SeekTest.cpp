#include "StreamOnScript.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Cause = VideoFailure::Cause;
using Kind = PlayerItem::Kind;
using Listener = VideoEngineListener;
using Status = PlayerItem::Status;
using TimeControl = VideoPlayer::TimeControl;

/** Tests seeking: the target, the completion, and events during a seek. */
class SeekTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_done.clear(); }
    void seekBeforeLoadSetsStart();
    void seekWhileLoadingLoadsAgainAtTarget();
    void seekBeforeStartFinishesWithFirstPicture();
    void positionAfterSeekIsThatOfEngine();
    void toleranceReachesEngine_data();
    void toleranceReachesEngine();
    void seekingPlayerShowsTargetAndWaits();
    void positionsFromBeforeSeekAreIgnored();
    void laterSeekReplacesEarlierOne();
    void seekIsLimitedToRecording_data();
    void seekIsLimitedToRecording();
    void impossibleSeekIsNotFinished_data();
    void impossibleSeekIsNotFinished();
    void completionIsCalledFromEventLoop();
    void anotherItemEndsSeek();
    void failureEndsSeek();
    void breakDuringSeekIsNotTreatedAsEnd();
    void seekThatDoesNotFinishIsStallAlsoWhenPaused();
    void seekAfterEndLoadsAgainAndStaysPaused();
    void destroyedPlayerCallsNoCompletion();

private:
    VideoPlayer::SeekCallback done()
    {
        return [this](bool finished) { m_done.append(finished); };
    }

    QList<bool> m_done;
};

void SeekTest::seekBeforeLoadSetsStart()
{
    StreamOnScript script;
    script.setItem();
    script.player->seek(1200, SeekTolerance::AtOrAfter);
    QCOMPARE(script.player->position(), 1200.0);
    script.start();
    QCOMPARE(script.engine->loads.size(), 1);
    QCOMPARE(script.engine->loads.first().startAt, 1200.0);
    QVERIFY(script.engine->seeks.isEmpty());
}

void SeekTest::seekWhileLoadingLoadsAgainAtTarget()
{
    StreamOnScript script;
    script.setItem();
    script.start();
    const int first = script.load();
    script.player->seek(60, SeekTolerance::AtOrAfter, done());
    QCOMPARE(script.engine->loads.size(), 2);
    QCOMPARE(script.engine->loads.last().startAt, 60.0);
    script.notify([=](Listener& to) { to.onPictureShown(first, 0); });
    QCOMPARE(script.item->status(), Status::Unknown);
    script.showPicture(60.2);
    QCOMPARE(script.player->position(), 60.2);
    QCOMPARE(m_done, QList<bool>{true});
}

void SeekTest::seekBeforeStartFinishesWithFirstPicture()
{
    StreamOnScript script;
    script.setItem();
    script.player->seek(60, SeekTolerance::AtOrAfter, done());
    script.start();
    QVERIFY(m_done.isEmpty());
    script.showPicture(60);
    QCOMPARE(m_done, QList<bool>{true});
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
}

void SeekTest::positionAfterSeekIsThatOfEngine()
{
    StreamOnScript script;
    script.playFrom(0);
    script.player->seek(60, SeekTolerance::AtOrAfter, done());
    script.finishSeek(60.4);
    QCOMPARE(script.player->position(), 60.4);
    QCOMPARE(m_done, QList<bool>{true});
    script.moveTo(60.5);
    QCOMPARE(script.player->position(), 60.5);
}

void SeekTest::toleranceReachesEngine_data()
{
    QTest::addColumn<SeekTolerance>("tolerance");
    QTest::newRow("at or after") << SeekTolerance::AtOrAfter;
    QTest::newRow("nearest") << SeekTolerance::Nearest;
}

void SeekTest::toleranceReachesEngine()
{
    QFETCH(const SeekTolerance, tolerance);
    StreamOnScript script;
    script.playFrom(0);
    script.player->seek(60, tolerance);
    QCOMPARE(script.engine->seeks.size(), 1);
    QCOMPARE(script.engine->seeks.first().load, script.load());
    QCOMPARE(script.engine->seeks.first().seconds, 60.0);
    QCOMPARE(int(script.engine->seeks.first().tolerance), int(tolerance));
}

void SeekTest::seekingPlayerShowsTargetAndWaits()
{
    StreamOnScript script;
    script.playFrom(0);
    script.player->seek(60, SeekTolerance::AtOrAfter);
    QCOMPARE(script.player->position(), 60.0);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    script.finishSeek(60);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void SeekTest::positionsFromBeforeSeekAreIgnored()
{
    StreamOnScript script;
    script.playFrom(0);
    script.player->seek(60, SeekTolerance::AtOrAfter);
    script.moveTo(0.04);
    QCOMPARE(script.player->position(), 60.0);
}

void SeekTest::laterSeekReplacesEarlierOne()
{
    StreamOnScript script;
    script.playFrom(0);
    QStringList order;
    script.player->seek(30, SeekTolerance::Nearest,
                        [&](bool finished) { order << (finished ? u"+first"_s : u"-first"_s); });
    const auto first = script.engine->seeks.last();
    script.player->seek(60, SeekTolerance::Nearest,
                        [&](bool finished) { order << (finished ? u"+later"_s : u"-later"_s); });
    script.notify([=](Listener& to) { to.onSeekFinished(first.load, first.number, 30); });
    QCOMPARE(script.player->position(), 60.0);
    script.finishSeek(60);
    QCOMPARE(order, QStringList({u"-first"_s, u"+later"_s}));
}

void SeekTest::seekIsLimitedToRecording_data()
{
    QTest::addColumn<double>("duration");
    QTest::addColumn<double>("requested");
    QTest::addColumn<double>("target");
    QTest::newRow("negative") << 120.0 << -10.0 << 0.0;
    QTest::newRow("inside") << 120.0 << 100.0 << 100.0;
    QTest::newRow("near the end") << 120.0 << 119.0 << 117.0;
    QTest::newRow("beyond the end") << 120.0 << 4000.0 << 117.0;
    QTest::newRow("a short recording") << 2.0 << 1.0 << 0.0;
}

void SeekTest::seekIsLimitedToRecording()
{
    QFETCH(const double, duration);
    QFETCH(const double, requested);
    StreamOnScript script;
    script.setItem();
    script.start();
    script.reportDuration(duration);
    script.showPicture(0);
    script.player->seek(requested, SeekTolerance::AtOrAfter);
    QTEST(script.engine->seeks.first().seconds, "target");
}

void SeekTest::impossibleSeekIsNotFinished_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("failed");
    QTest::addColumn<double>("to");
    QTest::newRow("live") << Kind::Live << false << 60.0;
    QTest::newRow("failed") << Kind::Recording << true << 60.0;
    QTest::newRow("not a number") << Kind::Recording << false << qQNaN();
    QTest::newRow("infinite") << Kind::Recording << false << qInf();
}

void SeekTest::impossibleSeekIsNotFinished()
{
    QFETCH(const Kind, kind);
    QFETCH(const bool, failed);
    QFETCH(const double, to);
    StreamOnScript script;
    script.setItem(kind);
    script.start();
    if (failed)
        script.fail({Cause::Status, 404, {}});
    else
        script.showPicture(5);
    const double before = script.player->position();
    script.player->seek(to, SeekTolerance::AtOrAfter, done());
    script.deliver();
    QCOMPARE(m_done, QList<bool>{false});
    QCOMPARE(script.player->position(), before);
    QVERIFY(script.engine->seeks.isEmpty());
    QCOMPARE(script.engine->loads.size(), 1);
}

void SeekTest::completionIsCalledFromEventLoop()
{
    StreamOnScript script;
    script.player->seek(10, SeekTolerance::AtOrAfter, done());
    QVERIFY(m_done.isEmpty());
    script.deliver();
    QCOMPARE(m_done, QList<bool>{false});
}

void SeekTest::anotherItemEndsSeek()
{
    StreamOnScript script;
    script.playFrom(0);
    script.player->seek(60, SeekTolerance::AtOrAfter, done());
    script.player->setItem(nullptr);
    QVERIFY(m_done.isEmpty());
    script.deliver();
    QCOMPARE(m_done, QList<bool>{false});
}

void SeekTest::failureEndsSeek()
{
    StreamOnScript script;
    script.setItem();
    script.player->seek(60, SeekTolerance::AtOrAfter, done());
    script.start();
    script.fail({Cause::Status, 404, {}});
    QCOMPARE(m_done, QList<bool>{false});
}

void SeekTest::breakDuringSeekIsNotTreatedAsEnd()
{
    StreamOnScript script;
    script.playFrom(0);
    script.moveTo(119);
    script.player->seek(117, SeekTolerance::AtOrAfter, done());
    script.endFile();
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.last().startAt, 117.0);
    QVERIFY(m_done.isEmpty());
    script.showPicture(117);
    QCOMPARE(m_done, QList<bool>{true});
}

void SeekTest::seekThatDoesNotFinishIsStallAlsoWhenPaused()
{
    StreamOnScript script;
    script.playFrom(0);
    script.player->pause();
    script.player->seek(60, SeekTolerance::AtOrAfter);
    script.clock.advance(11s);
    script.player->seek(70, SeekTolerance::AtOrAfter);
    script.clock.advance(12s - 1ms);
    QCOMPARE(script.engine->stops, 0);
    script.clock.advance(1ms + 1s);
    QCOMPARE(script.engine->loads.last().startAt, 70.0);
    QVERIFY(script.engine->loads.last().isPaused);
}

void SeekTest::seekAfterEndLoadsAgainAndStaysPaused()
{
    StreamOnScript script;
    script.playFrom(119);
    script.endFile();
    script.player->seek(60, SeekTolerance::AtOrAfter, done());
    QCOMPARE(script.engine->loads.last().startAt, 60.0);
    QVERIFY(script.engine->loads.last().isPaused);
    script.showPicture(60);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QCOMPARE(m_done, QList<bool>{true});
}

void SeekTest::destroyedPlayerCallsNoCompletion()
{
    StreamOnScript script;
    script.playFrom(0);
    script.player->seek(60, SeekTolerance::AtOrAfter, done());
    script.player->setItem(nullptr);
    script.player.reset();
    script.deliver();
    QVERIFY(m_done.isEmpty());
}

QUILLMERE_TEST(SeekTest, QCoreApplication)
#include "SeekTest.moc"
