#include "Rows.h"
#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

/** Tests timestamps that restart in the middle of a recording of 120 seconds. */
class TimestampTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positionContinuesWhenTimestampsRestart_data()
    {
        rows<double>({"restart"},
                     {{"at zero", 0}, {"negative", -16}, {"at an earlier time", 25}, {"beyond the end", 4000}});
    }
    void positionContinuesWhenTimestampsRestart()
    {
        QFETCH(const double, restart);
        PlayingFixture fixture(20);
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

    void endIsDetectedAfterTimestampsRestart()
    {
        PlayingFixture fixture(100);
        QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
        fixture.moveTo(110);
        fixture.jumpTo(0);
        for (int half = 1; half <= 18; ++half)
            fixture.report(half / 2.0);
        fixture.endFile();
        QCOMPARE(ended.count(), 1);
    }

    void seekUsesPositionNotTimestamp()
    {
        PlayingFixture fixture(20);
        fixture.moveTo(30);
        fixture.jumpTo(0);
        fixture.player->seek(15, SeekTolerance::AtOrAfter);
        QCOMPARE(fixture.engine->seeks.last().seconds, 15.0);
        fixture.finishSeek(15.5);
        QCOMPARE(fixture.player->position(), 15.5);
        fixture.moveTo(17);
        QCOMPARE(fixture.player->position(), 17.0);
    }

    void startAfterTimestampRestartIsAtTarget()
    {
        StreamPlayerFixture fixture;
        fixture.loadFrom(60);
        fixture.showPicture(4000);
        QCOMPARE(fixture.player->position(), 60.0);
        fixture.report(4000.5);
        QCOMPARE(fixture.player->position(), 60.5);
    }

    void bufferedPositionIsWithinRecording()
    {
        PlayingFixture fixture(20);
        fixture.reportEvent(&Listener::onBufferedToChanged, 4000);
        QCOMPARE(fixture.player->bufferedTo(), 120.0);
        fixture.jumpTo(3990);
        fixture.reportEvent(&Listener::onBufferedToChanged, 4000);
        QVERIFY(std::abs(fixture.player->bufferedTo() - 30) < 0.5);
    }

    void anotherItemResetsTimestampOffset()
    {
        PlayingFixture fixture(20);
        fixture.skipData();
        fixture.jumpTo(60);
        fixture.playFrom(20);
        fixture.skipData();
        fixture.jumpTo(60);
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
    }
};

QUILLMERE_TEST(TimestampTest, QGuiApplication)

} // namespace quillmere

#include "TimestampTest.moc"
