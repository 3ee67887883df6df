#include "StreamOnScript.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using Cause = VideoFailure::Cause;
using Kind = PlayerItem::Kind;
using Status = PlayerItem::Status;
using TimeControl = VideoPlayer::TimeControl;

/** Positions that nobody sought: data left out, timestamps that begin anew. Recordings of 120 seconds. */
class JumpTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dataLeftOutAreABreak();
    void aJumpIsNoResumePosition();
    void dataLeftOutAgainArePassedOver();
    void dataLeftOutElsewhereAreABreak();
    void aSingleSegmentIsPassedOver();
    void aJumpToTheEndIsNotTheEnd();
    void aLandingBeyondDataLeftOutIsABreak_data();
    void aLandingBeyondDataLeftOutIsABreak();
    void aLandingBeyondDataLeftOutAgainCounts();
    void aLateReportIsNoJump();
    void aPassingTimestampIsNoPosition();
    void timestampsThatBeginAnewGoOn_data();
    void timestampsThatBeginAnewGoOn();
    void theEndIsFoundBehindTimestampsThatBeganAnew();
    void aSeekIsToThePositionNotTheTimestamp();
    void aStartAmongTimestampsThatBeganAnewIsWhereItWasWanted();
    void theBufferedPartIsWithinTheRecording();
    void anotherItemKnowsNothingOfIt();
    void aLiveStreamPlaysOn_data();
    void aLiveStreamPlaysOn();

private:
    static void jumpTo(StreamOnScript& script, double seconds)
    {
        script.report(seconds);
        script.report(seconds + 0.04);
    }
};

void JumpTest::dataLeftOutAreABreak()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    script.moveTo(30);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    jumpTo(script, 80);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    QCOMPARE(script.player->position(), 30.0);
    QCOMPARE(script.engine->stops, 1);
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.last().startAt, 30.0);
    script.show(30.2);
    script.moveTo(50); // the server is whole again
    QCOMPARE(script.engine->loads.size(), 2);
    QCOMPARE(script.player->position(), 50.0);
}

void JumpTest::aJumpIsNoResumePosition()
{
    StreamOnScript script;
    QList<double> reports;
    const auto observer = script.player->addPeriodicTimeObserver(10s, [&](double seconds) { reports << seconds; });
    script.playFrom(20);
    script.skipData();
    script.moveTo(25);
    jumpTo(script, 80);
    QCOMPARE(reports, QList<double>{});
    script.clock.advance(1s);
    script.show(25);
    script.moveTo(30);
    QCOMPARE(reports, QList<double>{30});
}

void JumpTest::dataLeftOutAgainArePassedOver()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    script.moveTo(30);
    jumpTo(script, 80);
    script.clock.advance(1s);
    script.show(30.5);
    script.skipData();
    script.moveTo(30.8);
    jumpTo(script, 80);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.player->position(), 80.04);
    QSignalSpy ended(script.item.get(), &PlayerItem::didPlayToEnd);
    script.moveTo(119);
    script.endFile();
    QCOMPARE(ended.count(), 1);
}

void JumpTest::dataLeftOutElsewhereAreABreak()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    jumpTo(script, 40);
    script.clock.advance(1s);
    script.show(20);
    script.skipData();
    jumpTo(script, 40);
    script.moveTo(50);
    QCOMPARE(script.engine->loads.size(), 2);
    jumpTo(script, 90);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.last().startAt, 50.0);
}

void JumpTest::aSingleSegmentIsPassedOver()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    jumpTo(script, 30);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.player->position(), 30.04);
}

void JumpTest::aJumpToTheEndIsNotTheEnd()
{
    StreamOnScript script;
    script.playFrom(20);
    QSignalSpy ended(script.item.get(), &PlayerItem::didPlayToEnd);
    for (const std::chrono::seconds delay : {1s, 2s, 4s, 8s}) {
        script.skipData();
        jumpTo(script, 119);
        script.endFile();
        QCOMPARE(script.item->status(), Status::ReadyToPlay);
        script.clock.advance(delay);
        script.show(20);
    }
    script.skipData();
    jumpTo(script, 119);
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(int(script.item->error()->cause), int(Cause::BrokenStream));
    QCOMPARE(script.player->position(), 20.0);
    QCOMPARE(ended.count(), 0);
}

void JumpTest::aLandingBeyondDataLeftOutIsABreak_data()
{
    QTest::addColumn<bool>("atTheStart");
    QTest::newRow("of the start") << true;
    QTest::newRow("of a seek") << false;
}

void JumpTest::aLandingBeyondDataLeftOutIsABreak()
{
    QFETCH(const bool, atTheStart);
    StreamOnScript script;
    if (atTheStart) {
        script.setItem();
        script.player->seek(60, SeekTolerance::AtOrAfter);
        script.player->play();
        script.start();
        script.know(120);
        script.skipData();
        script.show(90);
    } else {
        script.playFrom(20);
        script.skipData();
        script.player->seek(60, SeekTolerance::AtOrAfter);
        script.land(90);
    }
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    QCOMPARE(script.player->position(), 60.0);
    script.clock.advance(1s);
    QCOMPARE(script.engine->loads.last().startAt, 60.0);
    script.show(60);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(script.player->position(), 60.0);
}

void JumpTest::aLandingBeyondDataLeftOutAgainCounts()
{
    StreamOnScript script;
    script.playFrom(20);
    QList<bool> done;
    script.skipData();
    script.player->seek(60, SeekTolerance::AtOrAfter, [&](bool finished) { done << finished; });
    script.land(90);
    QCOMPARE(done, QList<bool>{});
    script.clock.advance(1s);
    script.skipData();
    script.show(90);
    QCOMPARE(script.player->position(), 90.0);
    QCOMPARE(done, QList<bool>{true});
}

void JumpTest::aLateReportIsNoJump()
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
    jumpTo(script, 80);
    QCOMPARE(script.player->position(), 31.0);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
}

void JumpTest::aPassingTimestampIsNoPosition()
{
    StreamOnScript script;
    script.playFrom(20);
    script.moveTo(30);
    script.report(0);
    QCOMPARE(script.player->position(), 30.0);
    script.report(30.2);
    QCOMPARE(script.player->position(), 30.2);
}

void JumpTest::timestampsThatBeginAnewGoOn_data()
{
    QTest::addColumn<double>("anew");
    QTest::newRow("at nothing") << 0.0;
    QTest::newRow("before nothing") << -16.0;
    QTest::newRow("before") << 25.0;
    QTest::newRow("far beyond") << 4000.0;
}

void JumpTest::timestampsThatBeginAnewGoOn()
{
    QFETCH(const double, anew);
    StreamOnScript script;
    script.playFrom(20);
    script.moveTo(30);
    script.report(20); // where it was last sent
    jumpTo(script, anew);
    script.report(anew + 0.5);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    const double position = script.player->position();
    QVERIFY2(position > 30 && position < 31, qPrintable(QString::number(position)));
    for (int half = 2; half <= 20; ++half)
        script.report(anew + half / 2.0);
    QVERIFY(std::abs(script.player->position() - 40) < 0.5);
    QCOMPARE(script.engine->loads.size(), 1);
}

void JumpTest::theEndIsFoundBehindTimestampsThatBeganAnew()
{
    StreamOnScript script;
    script.playFrom(100);
    QSignalSpy ended(script.item.get(), &PlayerItem::didPlayToEnd);
    script.moveTo(110);
    jumpTo(script, 0);
    for (int half = 1; half <= 18; ++half)
        script.report(half / 2.0);
    script.endFile();
    QCOMPARE(ended.count(), 1);
}

void JumpTest::aSeekIsToThePositionNotTheTimestamp()
{
    StreamOnScript script;
    script.playFrom(20);
    script.moveTo(30);
    jumpTo(script, 0);
    script.player->seek(15, SeekTolerance::AtOrAfter);
    QCOMPARE(script.engine->seeks.last().seconds, 15.0);
    script.land(15.5);
    QCOMPARE(script.player->position(), 15.5);
    script.moveTo(17);
    QCOMPARE(script.player->position(), 17.0);
}

void JumpTest::aStartAmongTimestampsThatBeganAnewIsWhereItWasWanted()
{
    StreamOnScript script;
    script.setItem();
    script.player->seek(60, SeekTolerance::AtOrAfter);
    script.player->play();
    script.start();
    script.know(120);
    script.show(4000);
    QCOMPARE(script.player->position(), 60.0);
    script.report(4000.5);
    QCOMPARE(script.player->position(), 60.5);
}

void JumpTest::theBufferedPartIsWithinTheRecording()
{
    StreamOnScript script;
    script.playFrom(20);
    const auto buffer = [&](double upTo) {
        script.tell([=, load = script.load()](VideoEngineListener& to) { to.dataBuffered(load, upTo); });
    };
    buffer(4000);
    QCOMPARE(script.player->bufferedTo(), 120.0);
    jumpTo(script, 3990);
    buffer(4000);
    QVERIFY(std::abs(script.player->bufferedTo() - 30) < 0.5);
}

void JumpTest::anotherItemKnowsNothingOfIt()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    jumpTo(script, 60);
    script.playFrom(20);
    script.skipData();
    jumpTo(script, 60);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
}

void JumpTest::aLiveStreamPlaysOn_data()
{
    QTest::addColumn<double>("to");
    QTest::newRow("forward") << 4000.0;
    QTest::newRow("back") << 0.0;
}

void JumpTest::aLiveStreamPlaysOn()
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

QTEST_GUILESS_MAIN(JumpTest)
#include "JumpTest.moc"
