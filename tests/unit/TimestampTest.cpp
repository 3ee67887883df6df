#include "StreamOnScript.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using TimeControl = VideoPlayer::TimeControl;

/** Tests timestamps that restart in the middle of a recording of 120 seconds. */
class TimestampTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positionContinuesWhenTimestampsRestart_data();
    void positionContinuesWhenTimestampsRestart();
    void endIsDetectedAfterTimestampsRestart();
    void seekUsesPositionNotTimestamp();
    void startAfterTimestampRestartIsAtTarget();
    void bufferedPositionIsWithinRecording();
    void anotherItemResetsTimestampOffset();
};

void TimestampTest::positionContinuesWhenTimestampsRestart_data()
{
    QTest::addColumn<double>("restart");
    QTest::newRow("at zero") << 0.0;
    QTest::newRow("negative") << -16.0;
    QTest::newRow("at an earlier time") << 25.0;
    QTest::newRow("beyond the end") << 4000.0;
}

void TimestampTest::positionContinuesWhenTimestampsRestart()
{
    QFETCH(const double, restart);
    StreamOnScript script;
    script.playFrom(20);
    script.moveTo(30);
    script.report(20); // a single report of the position where playback started
    script.jumpTo(restart);
    script.report(restart + 0.5);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    const double position = script.player->position();
    QVERIFY2(position > 30 && position < 31, qPrintable(QString::number(position)));
    for (int half = 2; half <= 20; ++half)
        script.report(restart + half / 2.0);
    QVERIFY(std::abs(script.player->position() - 40) < 0.5);
    QCOMPARE(script.engine->loads.size(), 1);
}

void TimestampTest::endIsDetectedAfterTimestampsRestart()
{
    StreamOnScript script;
    script.playFrom(100);
    QSignalSpy ended(script.item.get(), &PlayerItem::didPlayToEnd);
    script.moveTo(110);
    script.jumpTo(0);
    for (int half = 1; half <= 18; ++half)
        script.report(half / 2.0);
    script.endFile();
    QCOMPARE(ended.count(), 1);
}

void TimestampTest::seekUsesPositionNotTimestamp()
{
    StreamOnScript script;
    script.playFrom(20);
    script.moveTo(30);
    script.jumpTo(0);
    script.player->seek(15, SeekTolerance::AtOrAfter);
    QCOMPARE(script.engine->seeks.last().seconds, 15.0);
    script.finishSeek(15.5);
    QCOMPARE(script.player->position(), 15.5);
    script.moveTo(17);
    QCOMPARE(script.player->position(), 17.0);
}

void TimestampTest::startAfterTimestampRestartIsAtTarget()
{
    StreamOnScript script;
    script.setItem();
    script.player->seek(60, SeekTolerance::AtOrAfter);
    script.player->play();
    script.start();
    script.reportDuration(120);
    script.showPicture(4000);
    QCOMPARE(script.player->position(), 60.0);
    script.report(4000.5);
    QCOMPARE(script.player->position(), 60.5);
}

void TimestampTest::bufferedPositionIsWithinRecording()
{
    StreamOnScript script;
    script.playFrom(20);
    const auto buffer = [&](double upTo) {
        script.notify([=, load = script.load()](VideoEngineListener& to) { to.onBufferedToChanged(load, upTo); });
    };
    buffer(4000);
    QCOMPARE(script.player->bufferedTo(), 120.0);
    script.jumpTo(3990);
    buffer(4000);
    QVERIFY(std::abs(script.player->bufferedTo() - 30) < 0.5);
}

void TimestampTest::anotherItemResetsTimestampOffset()
{
    StreamOnScript script;
    script.playFrom(20);
    script.skipData();
    script.jumpTo(60);
    script.playFrom(20);
    script.skipData();
    script.jumpTo(60);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
}

QUILLMERE_TEST(TimestampTest, QGuiApplication)
#include "TimestampTest.moc"
