#include "Rows.h"
#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

/** Tests position jumps without a seek, caused by data missing from the stream. Recordings are 120 seconds long. */
class JumpTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingDataIsTreatedAsBreak()
    {
        PlayingFixture fixture(20);
        fixture.skipData();
        fixture.moveTo(30);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
        fixture.jumpTo(80);
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
        QCOMPARE(fixture.player->position(), 30.0);
        QCOMPARE(fixture.engine->stops, 1);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.engine->loads.last().startAt, 30.0);
        fixture.showPicture(30.2);
        fixture.moveTo(50); // the server sends all data again
        QCOMPARE(fixture.engine->loads.size(), 2);
        QCOMPARE(fixture.player->position(), 50.0);
    }

    void positionAfterJumpIsNotReported()
    {
        StreamPlayerFixture fixture;
        QList<double> reports;
        const auto observer = fixture.player->addPeriodicTimeObserver(10s, [&](double seconds) { reports << seconds; });
        fixture.playFrom(20);
        fixture.skipData();
        fixture.moveTo(25);
        fixture.jumpTo(80);
        QCOMPARE(reports, QList<double>{});
        fixture.reconnect(1s, 25);
        fixture.moveTo(30);
        QCOMPARE(reports, QList<double>{30});
    }

    void dataMissingAgainIsSkipped()
    {
        PlayingFixture fixture(20);
        fixture.skipData();
        fixture.moveTo(30);
        fixture.jumpTo(80);
        fixture.reconnect(1s, 30.5);
        fixture.skipData();
        fixture.moveTo(30.8);
        fixture.jumpTo(80);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
        QCOMPARE(fixture.player->position(), 80.04);
        QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
        fixture.moveTo(119);
        fixture.endFile();
        QCOMPARE(ended.count(), 1);
    }

    void dataMissingElsewhereIsTreatedAsBreak()
    {
        PlayingFixture fixture(20);
        fixture.skipData();
        fixture.jumpTo(40);
        fixture.reconnect(1s, 20);
        fixture.skipData();
        fixture.jumpTo(40);
        fixture.moveTo(50);
        QCOMPARE(fixture.engine->loads.size(), 2);
        fixture.jumpTo(90);
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.engine->loads.last().startAt, 50.0);
    }

    void singleMissingSegmentIsSkipped()
    {
        PlayingFixture fixture(20);
        fixture.skipData();
        fixture.jumpTo(30);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
        QCOMPARE(fixture.player->position(), 30.04);
    }

    void jumpToEndIsNotTreatedAsEnd()
    {
        PlayingFixture fixture(20);
        QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
        for (const std::chrono::seconds delay : {1s, 2s, 4s, 8s}) {
            fixture.skipData();
            fixture.jumpTo(119);
            fixture.endFile();
            QCOMPARE(fixture.item->status(), Status::ReadyToPlay);
            fixture.reconnect(delay, 20);
        }
        fixture.skipData();
        fixture.jumpTo(119);
        QCOMPARE(fixture.item->status(), Status::Failed);
        QCOMPARE(int(fixture.item->error()->cause), int(Cause::BrokenStream));
        QCOMPARE(fixture.player->position(), 20.0);
        QCOMPARE(ended.count(), 0);
    }

    void landingBehindMissingDataIsTreatedAsBreak_data()
    {
        rows<bool>({"atTheStart"}, {{"at the start", true}, {"after a seek", false}});
    }
    void landingBehindMissingDataIsTreatedAsBreak()
    {
        QFETCH(const bool, atTheStart);
        StreamPlayerFixture fixture;
        if (atTheStart) {
            fixture.loadFrom(60);
            fixture.skipData();
            fixture.showPicture(90);
        } else {
            fixture.playFrom(20);
            fixture.skipData();
            fixture.player->seek(60, SeekTolerance::AtOrAfter);
            fixture.finishSeek(90);
        }
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
        QCOMPARE(fixture.player->position(), 60.0);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.engine->loads.last().startAt, 60.0);
        fixture.showPicture(60);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
        QCOMPARE(fixture.player->position(), 60.0);
    }

    void secondLandingBehindMissingDataIsAccepted()
    {
        PlayingFixture fixture(20);
        QList<bool> done;
        fixture.skipData();
        fixture.player->seek(60, SeekTolerance::AtOrAfter, [&](bool finished) { done << finished; });
        fixture.finishSeek(90);
        QCOMPARE(done, QList<bool>{});
        fixture.clock.advance(1s);
        fixture.skipData();
        fixture.showPicture(90);
        QCOMPARE(fixture.player->position(), 90.0);
        QCOMPARE(done, QList<bool>{true});
    }

    void lateReportIsNotTreatedAsJump()
    {
        PlayingFixture fixture(20);
        fixture.skipData();
        fixture.clock.advance(11s);
        fixture.report(31);
        QCOMPARE(fixture.player->position(), 31.0);
        fixture.player->pause();
        fixture.clock.advance(1h);
        fixture.player->play();
        fixture.jumpTo(80);
        QCOMPARE(fixture.player->position(), 31.0);
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
    }

    void singleWrongTimestampIsIgnored()
    {
        PlayingFixture fixture(20);
        fixture.moveTo(30);
        fixture.report(0);
        QCOMPARE(fixture.player->position(), 30.0);
        fixture.report(30.2);
        QCOMPARE(fixture.player->position(), 30.2);
    }

    void liveStreamPlaysOnAfterJump_data() { rows<double>({"to"}, {{"forward", 4000}, {"back", 0}}); }
    void liveStreamPlaysOnAfterJump()
    {
        QFETCH(const double, to);
        PlayingFixture fixture(0, Kind::Live);
        fixture.skipData();
        fixture.report(30);
        fixture.report(to);
        QCOMPARE(fixture.player->position(), to);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
        QCOMPARE(fixture.engine->loads.size(), 1);
    }
};

QUILLMERE_TEST(JumpTest, QCoreApplication)

} // namespace quillmere

#include "JumpTest.moc"
