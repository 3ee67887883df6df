#include "Rows.h"
#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

/** Tests seeking: the target, the completion, and events during a seek. */
class SeekTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_done.clear(); }
    void seekBeforeLoadSetsStartAndFinishesWithFirstPicture()
    {
        StreamPlayerFixture fixture;
        fixture.setItem();
        fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
        QCOMPARE(fixture.player->position(), 60.0);
        fixture.start();
        QCOMPARE(fixture.engine->loads.size(), 1);
        QCOMPARE(fixture.engine->loads.first().startAt, 60.0);
        QVERIFY(fixture.engine->seeks.isEmpty());
        QVERIFY(m_done.isEmpty());
        fixture.showPicture(60);
        QCOMPARE(m_done, QList<bool>{true});
        QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    }

    void seekWhileLoadingLoadsAgainAtTarget()
    {
        LoadingFixture fixture;
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

    void toleranceReachesEngine_data()
    {
        rows<SeekTolerance>({"tolerance"},
                            {{"at or after", SeekTolerance::AtOrAfter}, {"nearest", SeekTolerance::Nearest}});
    }
    void toleranceReachesEngine()
    {
        QFETCH(const SeekTolerance, tolerance);
        PlayingFixture fixture(0);
        fixture.player->seek(60, tolerance);
        QCOMPARE(fixture.engine->seeks.size(), 1);
        QCOMPARE(fixture.engine->seeks.first().load, fixture.load());
        QCOMPARE(fixture.engine->seeks.first().seconds, 60.0);
        QCOMPARE(int(fixture.engine->seeks.first().tolerance), int(tolerance));
    }

    void seekingPlayerWaitsAtTargetUntilEngineReportsPosition()
    {
        PlayingFixture fixture(0);
        fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
        QCOMPARE(fixture.player->position(), 60.0);
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
        fixture.report(0.04); // a position from before the seek
        QCOMPARE(fixture.player->position(), 60.0);
        fixture.finishSeek(60.4);
        QCOMPARE(fixture.player->position(), 60.4);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
        QCOMPARE(m_done, QList<bool>{true});
        fixture.moveTo(60.5);
        QCOMPARE(fixture.player->position(), 60.5);
    }

    void laterSeekReplacesEarlierOne()
    {
        PlayingFixture fixture(0);
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

    void seekIsLimitedToRecording_data()
    {
        rows<double, double, double>({"duration", "requested", "target"}, {{"negative", 120, -10, 0},
                                                                           {"inside", 120, 100, 100},
                                                                           {"near the end", 120, 119, 117},
                                                                           {"beyond the end", 120, 4000, 117},
                                                                           {"a short recording", 2, 1, 0}});
    }
    void seekIsLimitedToRecording()
    {
        QFETCH(const double, duration);
        QFETCH(const double, requested);
        LoadingFixture fixture;
        fixture.reportDuration(duration);
        fixture.showPicture(0);
        fixture.player->seek(requested, SeekTolerance::AtOrAfter);
        QTEST(fixture.engine->seeks.first().seconds, "target");
    }

    void impossibleSeekIsNotFinished_data()
    {
        rows<Kind, bool, double>({"kind", "failed", "to"}, {{"live", Kind::Live, false, 60},
                                                            {"failed", Kind::Recording, true, 60},
                                                            {"not a number", Kind::Recording, false, qQNaN()},
                                                            {"infinite", Kind::Recording, false, qInf()}});
    }
    void impossibleSeekIsNotFinished()
    {
        QFETCH(const Kind, kind);
        QFETCH(const bool, failed);
        QFETCH(const double, to);
        LoadingFixture fixture(kind);
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

    void completionIsCalledFromEventLoop()
    {
        StreamPlayerFixture fixture;
        fixture.player->seek(10, SeekTolerance::AtOrAfter, done());
        QVERIFY(m_done.isEmpty());
        fixture.deliver();
        QCOMPARE(m_done, QList<bool>{false});
    }

    void anotherItemEndsSeek()
    {
        PlayingFixture fixture(0);
        fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
        fixture.player->setItem(nullptr);
        QVERIFY(m_done.isEmpty());
        fixture.deliver();
        QCOMPARE(m_done, QList<bool>{false});
    }

    void failureEndsSeek()
    {
        StreamPlayerFixture fixture;
        fixture.setItem();
        fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
        fixture.start();
        fixture.fail({Cause::Status, 404, {}});
        QCOMPARE(m_done, QList<bool>{false});
    }

    void breakDuringSeekIsNotTreatedAsEnd()
    {
        PlayingFixture fixture(0);
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

    void seekThatDoesNotFinishIsStallAlsoWhenPaused()
    {
        PlayingFixture fixture(0);
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

    void seekAfterEndLoadsAgainAndStaysPaused()
    {
        PlayingFixture fixture(119);
        fixture.endFile();
        fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
        QCOMPARE(fixture.engine->loads.last().startAt, 60.0);
        QVERIFY(fixture.engine->loads.last().isPaused);
        fixture.showPicture(60);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
        QCOMPARE(m_done, QList<bool>{true});
    }

    void destroyedPlayerCallsNoCompletion()
    {
        PlayingFixture fixture(0);
        fixture.player->seek(60, SeekTolerance::AtOrAfter, done());
        fixture.player->setItem(nullptr);
        fixture.player.reset();
        fixture.deliver();
        QVERIFY(m_done.isEmpty());
    }

private:
    VideoPlayer::SeekCallback done()
    {
        return [this](bool finished) { m_done.append(finished); };
    }

    QList<bool> m_done;
};

QUILLMERE_TEST(SeekTest, QCoreApplication)

} // namespace quillmere

#include "SeekTest.moc"
