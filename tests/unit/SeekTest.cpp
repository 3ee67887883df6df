#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

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
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.player->seek(1200, SeekTolerance::AtOrAfter);
    QCOMPARE(fixture.player->position(), 1200.0);
    fixture.start();
    QCOMPARE(fixture.engine->loads.size(), 1);
    QCOMPARE(fixture.engine->loads.first().startAt, 1200.0);
    QVERIFY(fixture.engine->seeks.isEmpty());
}

void SeekTest::seekWhileLoadingLoadsAgainAtTarget()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.start();
    const int first = fixture.load();
    fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
    QCOMPARE(fixture.engine->loads.size(), 2);
    QCOMPARE(fixture.engine->loads.last().startAt, 60.0);
    fixture.notify([=](Listener& to) { to.onPictureShown(first, 0); });
    QCOMPARE(fixture.item->status(), Status::Unknown);
    fixture.showPicture(60.2);
    QCOMPARE(fixture.player->position(), 60.2);
    QCOMPARE(m_done, QList<bool>{true});
}

void SeekTest::seekBeforeStartFinishesWithFirstPicture()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
    fixture.start();
    QVERIFY(m_done.isEmpty());
    fixture.showPicture(60);
    QCOMPARE(m_done, QList<bool>{true});
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
}

void SeekTest::positionAfterSeekIsThatOfEngine()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
    fixture.finishSeek(60.4);
    QCOMPARE(fixture.player->position(), 60.4);
    QCOMPARE(m_done, QList<bool>{true});
    fixture.moveTo(60.5);
    QCOMPARE(fixture.player->position(), 60.5);
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
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    fixture.player->seek(60, tolerance);
    QCOMPARE(fixture.engine->seeks.size(), 1);
    QCOMPARE(fixture.engine->seeks.first().load, fixture.load());
    QCOMPARE(fixture.engine->seeks.first().seconds, 60.0);
    QCOMPARE(int(fixture.engine->seeks.first().tolerance), int(tolerance));
}

void SeekTest::seekingPlayerShowsTargetAndWaits()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    fixture.player->seek(60, SeekTolerance::AtOrAfter);
    QCOMPARE(fixture.player->position(), 60.0);
    QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
    fixture.finishSeek(60);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
}

void SeekTest::positionsFromBeforeSeekAreIgnored()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    fixture.player->seek(60, SeekTolerance::AtOrAfter);
    fixture.moveTo(0.04);
    QCOMPARE(fixture.player->position(), 60.0);
}

void SeekTest::laterSeekReplacesEarlierOne()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    QStringList order;
    fixture.player->seek(30, SeekTolerance::Nearest,
                         [&](bool finished) { order << (finished ? u"+first"_s : u"-first"_s); });
    const auto first = fixture.engine->seeks.last();
    fixture.player->seek(60, SeekTolerance::Nearest,
                         [&](bool finished) { order << (finished ? u"+later"_s : u"-later"_s); });
    fixture.notify([=](Listener& to) { to.onSeekFinished(first.load, first.number, 30); });
    QCOMPARE(fixture.player->position(), 60.0);
    fixture.finishSeek(60);
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
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.start();
    fixture.reportDuration(duration);
    fixture.showPicture(0);
    fixture.player->seek(requested, SeekTolerance::AtOrAfter);
    QTEST(fixture.engine->seeks.first().seconds, "target");
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
    StreamPlayerFixture fixture;
    fixture.setItem(kind);
    fixture.start();
    if (failed)
        fixture.fail({Cause::Status, 404, {}});
    else
        fixture.showPicture(5);
    const double before = fixture.player->position();
    fixture.player->seek(to, SeekTolerance::AtOrAfter, done());
    fixture.deliver();
    QCOMPARE(m_done, QList<bool>{false});
    QCOMPARE(fixture.player->position(), before);
    QVERIFY(fixture.engine->seeks.isEmpty());
    QCOMPARE(fixture.engine->loads.size(), 1);
}

void SeekTest::completionIsCalledFromEventLoop()
{
    StreamPlayerFixture fixture;
    fixture.player->seek(10, SeekTolerance::AtOrAfter, done());
    QVERIFY(m_done.isEmpty());
    fixture.deliver();
    QCOMPARE(m_done, QList<bool>{false});
}

void SeekTest::anotherItemEndsSeek()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
    fixture.player->setItem(nullptr);
    QVERIFY(m_done.isEmpty());
    fixture.deliver();
    QCOMPARE(m_done, QList<bool>{false});
}

void SeekTest::failureEndsSeek()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
    fixture.start();
    fixture.fail({Cause::Status, 404, {}});
    QCOMPARE(m_done, QList<bool>{false});
}

void SeekTest::breakDuringSeekIsNotTreatedAsEnd()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    fixture.moveTo(119);
    fixture.player->seek(117, SeekTolerance::AtOrAfter, done());
    fixture.endFile();
    QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
    fixture.clock.advance(1s);
    QCOMPARE(fixture.engine->loads.last().startAt, 117.0);
    QVERIFY(m_done.isEmpty());
    fixture.showPicture(117);
    QCOMPARE(m_done, QList<bool>{true});
}

void SeekTest::seekThatDoesNotFinishIsStallAlsoWhenPaused()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    fixture.player->pause();
    fixture.player->seek(60, SeekTolerance::AtOrAfter);
    fixture.clock.advance(11s);
    fixture.player->seek(70, SeekTolerance::AtOrAfter);
    fixture.clock.advance(12s - 1ms);
    QCOMPARE(fixture.engine->stops, 0);
    fixture.clock.advance(1ms + 1s);
    QCOMPARE(fixture.engine->loads.last().startAt, 70.0);
    QVERIFY(fixture.engine->loads.last().isPaused);
}

void SeekTest::seekAfterEndLoadsAgainAndStaysPaused()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(119);
    fixture.endFile();
    fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
    QCOMPARE(fixture.engine->loads.last().startAt, 60.0);
    QVERIFY(fixture.engine->loads.last().isPaused);
    fixture.showPicture(60);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QCOMPARE(m_done, QList<bool>{true});
}

void SeekTest::destroyedPlayerCallsNoCompletion()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
    fixture.player->setItem(nullptr);
    fixture.player.reset();
    fixture.deliver();
    QVERIFY(m_done.isEmpty());
}

QUILLMERE_TEST(SeekTest, QCoreApplication)

} // namespace quillmere

#include "SeekTest.moc"
