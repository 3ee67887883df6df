#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

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
    StreamPlayerFixture fixture;
    fixture.playFrom(20);
    fixture.moveTo(30);
    fixture.report(20); // a single report of the position where playback started
    fixture.jumpTo(restart);
    fixture.report(restart + 0.5);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    const double position = fixture.player->position();
    QVERIFY2(position > 30 && position < 31, qPrintable(QString::number(position)));
    for (int half = 2; half <= 20; ++half)
        fixture.report(restart + half / 2.0);
    QVERIFY(std::abs(fixture.player->position() - 40) < 0.5);
    QCOMPARE(fixture.engine->loads.size(), 1);
}

void TimestampTest::endIsDetectedAfterTimestampsRestart()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(100);
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    fixture.moveTo(110);
    fixture.jumpTo(0);
    for (int half = 1; half <= 18; ++half)
        fixture.report(half / 2.0);
    fixture.endFile();
    QCOMPARE(ended.count(), 1);
}

void TimestampTest::seekUsesPositionNotTimestamp()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(20);
    fixture.moveTo(30);
    fixture.jumpTo(0);
    fixture.player->seek(15, SeekTolerance::AtOrAfter);
    QCOMPARE(fixture.engine->seeks.last().seconds, 15.0);
    fixture.finishSeek(15.5);
    QCOMPARE(fixture.player->position(), 15.5);
    fixture.moveTo(17);
    QCOMPARE(fixture.player->position(), 17.0);
}

void TimestampTest::startAfterTimestampRestartIsAtTarget()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.player->seek(60, SeekTolerance::AtOrAfter);
    fixture.player->play();
    fixture.start();
    fixture.reportDuration(120);
    fixture.showPicture(4000);
    QCOMPARE(fixture.player->position(), 60.0);
    fixture.report(4000.5);
    QCOMPARE(fixture.player->position(), 60.5);
}

void TimestampTest::bufferedPositionIsWithinRecording()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(20);
    const auto buffer = [&](double upTo) {
        fixture.notify([=, load = fixture.load()](VideoEngineListener& to) { to.onBufferedToChanged(load, upTo); });
    };
    buffer(4000);
    QCOMPARE(fixture.player->bufferedTo(), 120.0);
    fixture.jumpTo(3990);
    buffer(4000);
    QVERIFY(std::abs(fixture.player->bufferedTo() - 30) < 0.5);
}

void TimestampTest::anotherItemResetsTimestampOffset()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(20);
    fixture.skipData();
    fixture.jumpTo(60);
    fixture.playFrom(20);
    fixture.skipData();
    fixture.jumpTo(60);
    QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
}

QUILLMERE_TEST(TimestampTest, QGuiApplication)

} // namespace quillmere

#include "TimestampTest.moc"
