#include "StreamOnScript.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using Cause = VideoFailure::Cause;
using Kind = PlayerItem::Kind;
using Status = PlayerItem::Status;
using TimeControl = VideoPlayer::TimeControl;

/** Tests position jumps without a seek, caused by data missing from the stream. Recordings are 120 seconds long. */
class JumpTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingDataIsTreatedAsBreak();
    void positionAfterJumpIsNotReported();
    void dataMissingAgainIsSkipped();
    void dataMissingElsewhereIsTreatedAsBreak();
    void singleMissingSegmentIsSkipped();
    void jumpToEndIsNotTreatedAsEnd();
    void landingBehindMissingDataIsTreatedAsBreak_data();
    void landingBehindMissingDataIsTreatedAsBreak();
    void secondLandingBehindMissingDataIsAccepted();
    void lateReportIsNotTreatedAsJump();
    void singleWrongTimestampIsIgnored();
    void liveStreamPlaysOnAfterJump_data();
    void liveStreamPlaysOnAfterJump();
};

void JumpTest::missingDataIsTreatedAsBreak()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    script.moveTo(30);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    script.jumpTo(80);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    QCOMPARE(script.player->position(), 30.0);
    QCOMPARE(script.engine->stops, 1);
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.last().startAt, 30.0);
    script.showPicture(30.2);
    script.moveTo(50); // the server sends all data again
    QCOMPARE(script.engine->loads.size(), 2);
    QCOMPARE(script.player->position(), 50.0);
}

void JumpTest::positionAfterJumpIsNotReported()
{
    StreamOnScript script;
    QList<double> reports;
    const auto observer = script.player->addPeriodicTimeObserver(10s, [&](double seconds) { reports << seconds; });
    script.playFrom(20);
    script.skipData();
    script.moveTo(25);
    script.jumpTo(80);
    QCOMPARE(reports, QList<double>{});
    script.clock.advance(1s);
    script.showPicture(25);
    script.moveTo(30);
    QCOMPARE(reports, QList<double>{30});
}

void JumpTest::dataMissingAgainIsSkipped()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    script.moveTo(30);
    script.jumpTo(80);
    script.clock.advance(1s);
    script.showPicture(30.5);
    script.skipData();
    script.moveTo(30.8);
    script.jumpTo(80);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.player->position(), 80.04);
    QSignalSpy ended(script.item.get(), &PlayerItem::didPlayToEnd);
    script.moveTo(119);
    script.endFile();
    QCOMPARE(ended.count(), 1);
}

void JumpTest::dataMissingElsewhereIsTreatedAsBreak()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    script.jumpTo(40);
    script.clock.advance(1s);
    script.showPicture(20);
    script.skipData();
    script.jumpTo(40);
    script.moveTo(50);
    QCOMPARE(script.engine->loads.size(), 2);
    script.jumpTo(90);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.last().startAt, 50.0);
}

void JumpTest::singleMissingSegmentIsSkipped()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    script.jumpTo(30);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.player->position(), 30.04);
}

void JumpTest::jumpToEndIsNotTreatedAsEnd()
{
    StreamOnScript script;
    script.playFrom(20);
    QSignalSpy ended(script.item.get(), &PlayerItem::didPlayToEnd);
    for (const std::chrono::seconds delay : {1s, 2s, 4s, 8s}) {
        script.skipData();
        script.jumpTo(119);
        script.endFile();
        QCOMPARE(script.item->status(), Status::ReadyToPlay);
        script.clock.advance(delay);
        script.showPicture(20);
    }
    script.skipData();
    script.jumpTo(119);
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(int(script.item->error()->cause), int(Cause::BrokenStream));
    QCOMPARE(script.player->position(), 20.0);
    QCOMPARE(ended.count(), 0);
}

void JumpTest::landingBehindMissingDataIsTreatedAsBreak_data()
{
    QTest::addColumn<bool>("atTheStart");
    QTest::newRow("at the start") << true;
    QTest::newRow("after a seek") << false;
}

void JumpTest::landingBehindMissingDataIsTreatedAsBreak()
{
    QFETCH(const bool, atTheStart);
    StreamOnScript script;
    if (atTheStart) {
        script.setItem();
        script.player->seek(60, SeekTolerance::AtOrAfter);
        script.player->play();
        script.start();
        script.reportDuration(120);
        script.skipData();
        script.showPicture(90);
    } else {
        script.playFrom(20);
        script.skipData();
        script.player->seek(60, SeekTolerance::AtOrAfter);
        script.finishSeek(90);
    }
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    QCOMPARE(script.player->position(), 60.0);
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.last().startAt, 60.0);
    script.showPicture(60);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.player->position(), 60.0);
}

void JumpTest::secondLandingBehindMissingDataIsAccepted()
{
    StreamOnScript script;
    script.playFrom(20);
    QList<bool> done;
    script.skipData();
    script.player->seek(60, SeekTolerance::AtOrAfter, [&](bool finished) { done << finished; });
    script.finishSeek(90);
    QCOMPARE(done, QList<bool>{});
    script.clock.advance(1s);
    script.skipData();
    script.showPicture(90);
    QCOMPARE(script.player->position(), 90.0);
    QCOMPARE(done, QList<bool>{true});
}

void JumpTest::lateReportIsNotTreatedAsJump()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    script.clock.advance(11s);
    script.report(31);
    QCOMPARE(script.player->position(), 31.0);
    script.player->pause();
    script.clock.advance(1h);
    script.player->play();
    script.jumpTo(80);
    QCOMPARE(script.player->position(), 31.0);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
}

void JumpTest::singleWrongTimestampIsIgnored()
{
    StreamOnScript script;
    script.playFrom(20);
    script.moveTo(30);
    script.report(0);
    QCOMPARE(script.player->position(), 30.0);
    script.report(30.2);
    QCOMPARE(script.player->position(), 30.2);
}

void JumpTest::liveStreamPlaysOnAfterJump_data()
{
    QTest::addColumn<double>("to");
    QTest::newRow("forward") << 4000.0;
    QTest::newRow("back") << 0.0;
}

void JumpTest::liveStreamPlaysOnAfterJump()
{
    QFETCH(const double, to);
    StreamOnScript script;
    script.playFrom(0, Kind::Live);
    script.skipData();
    script.report(30);
    script.report(to);
    QCOMPARE(script.player->position(), to);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.engine->loads.size(), 1);
}

QUILLMERE_TEST(JumpTest, QCoreApplication)
#include "JumpTest.moc"
