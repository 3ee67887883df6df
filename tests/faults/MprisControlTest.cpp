#include "MprisFixture.h"
#include "TestMain.h"

#include <QRegularExpression>
#include <QSignalSpy>

#include <limits>

namespace quillmere {

/** Other programs, such as `playerctl`, control a player on a real bus. */
class MprisControlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void playAndPauseControlPlayer();
    void playPauseTogglesPlayback();
    void stopEmitsStopRequested();
    void seekIsRelativeToPosition();
    void setPositionSeeks();
    void positionOutsideTapeIsIgnored_data();
    void positionOutsideTapeIsIgnored();
    void positionForOtherTrackIsIgnored();
    void unseekableItemIgnoresSeeks();
    void failedItemIgnoresPlay();
};

void MprisControlTest::playAndPauseControlPlayer()
{
    MprisFixture bus;
    bus.start();
    QCOMPARE(bus.playerctl({u"pause"_s}), QString());
    QTRY_COMPARE(bus.player.timeControl(), VideoPlayer::TimeControl::Paused);
    QCOMPARE(bus.playerctl({u"play"_s}), QString());
    QTRY_COMPARE(bus.player.timeControl(), VideoPlayer::TimeControl::Playing);
}

void MprisControlTest::playPauseTogglesPlayback()
{
    MprisFixture bus;
    bus.start();
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(bus.playerctl({u"play-pause"_s}), QString());
        QTRY_COMPARE(bus.player.timeControl(), VideoPlayer::TimeControl::Paused);
        QCOMPARE(bus.playerctl({u"play-pause"_s}), QString());
        QTRY_COMPARE(bus.player.timeControl(), VideoPlayer::TimeControl::Playing);
    }
}

void MprisControlTest::stopEmitsStopRequested()
{
    MprisFixture bus;
    bus.start();
    QSignalSpy stop(bus.presence.get(), &DesktopPresence::stopRequested);
    QCOMPARE(bus.playerctl({u"stop"_s}), QString());
    QTRY_COMPARE(stop.size(), 1);
    QCOMPARE(bus.player.timeControl(), VideoPlayer::TimeControl::Playing);
}

void MprisControlTest::seekIsRelativeToPosition()
{
    MprisFixture bus;
    bus.start();
    bus.player.moveTo(100);
    QCOMPARE(bus.playerctl({u"position"_s, u"30+"_s}), QString());
    QTRY_COMPARE(bus.player.seeks.size(), 1);
    QCOMPARE(bus.player.seeks.constLast().seconds, 130.0);
    QCOMPARE(bus.player.seeks.constLast().tolerance, SeekTolerance::AtOrAfter);
    bus.player.moveTo(20);
    QCOMPARE(bus.playerctl({u"position"_s, u"30-"_s}), QString());
    QTRY_COMPARE(bus.player.seeks.size(), 2);
    QCOMPARE(bus.player.seeks.constLast().seconds, 0.0);
}

void MprisControlTest::setPositionSeeks()
{
    MprisFixture bus;
    bus.start();
    QCOMPARE(bus.playerctl({u"position"_s, u"1800"_s}), QString());
    QTRY_COMPARE(bus.player.seeks.size(), 1);
    QCOMPARE(bus.player.seeks.constLast().seconds, 1800.0);
}

void MprisControlTest::positionOutsideTapeIsIgnored_data()
{
    QTest::addColumn<qlonglong>("position");
    QTest::newRow("before it") << qlonglong(-1);
    QTest::newRow("after it") << qlonglong(3600000001);
    QTest::newRow("far before it") << std::numeric_limits<qlonglong>::min();
    QTest::newRow("far after it") << std::numeric_limits<qlonglong>::max();
}

void MprisControlTest::positionOutsideTapeIsIgnored()
{
    MprisFixture bus;
    QFETCH(const qlonglong, position);
    bus.start();
    const QVariant track = bus.metadata().value(u"mpris:trackid"_s);
    bus.call(u"SetPosition"_s, {track, position});
    bus.call(u"SetPosition"_s, {track, qlonglong(7000000)});
    QTRY_VERIFY(!bus.player.seeks.isEmpty());
    QCOMPARE(bus.player.seeks.constFirst().seconds, 7.0);
}

void MprisControlTest::positionForOtherTrackIsIgnored()
{
    MprisFixture bus;
    bus.start();
    const QVariant before = bus.metadata().value(u"mpris:trackid"_s);
    bus.presence.reset();
    QTRY_VERIFY(!bus.isRegistered());
    bus.start();
    const QVariant track = bus.metadata().value(u"mpris:trackid"_s);
    QVERIFY(track.value<QDBusObjectPath>() != before.value<QDBusObjectPath>());
    bus.call(u"SetPosition"_s, {before, qlonglong(5000000)});
    bus.call(u"SetPosition"_s, {track, qlonglong(7000000)});
    QTRY_VERIFY(!bus.player.seeks.isEmpty());
    QCOMPARE(bus.player.seeks.constFirst().seconds, 7.0);
}

void MprisControlTest::unseekableItemIgnoresSeeks()
{
    MprisFixture bus;
    bus.start();
    bus.player.setSeekable(false);
    QTRY_COMPARE(bus.property(MprisFixture::playerInterface, u"CanSeek"_s), QVariant(false));
    bus.call(u"Seek"_s, {qlonglong(5000000)});
    bus.call(u"SetPosition"_s, {bus.metadata().value(u"mpris:trackid"_s), qlonglong(5000000)});
    bus.call(u"Pause"_s);
    QTRY_COMPARE(bus.player.timeControl(), VideoPlayer::TimeControl::Paused);
    QCOMPARE(bus.player.seeks.size(), 0);
}

void MprisControlTest::failedItemIgnoresPlay()
{
    MprisFixture bus;
    bus.start();
    bus.player.fail({});
    QTRY_COMPARE(bus.property(MprisFixture::playerInterface, u"PlaybackStatus"_s).toString(), u"Stopped"_s);
    QCOMPARE(bus.property(MprisFixture::playerInterface, u"CanPlay"_s), QVariant(false));
    QCOMPARE(bus.property(MprisFixture::playerInterface, u"CanSeek"_s), QVariant(false));
    const auto plays = bus.player.calls()->count(u"play"_s);
    QSignalSpy stop(bus.presence.get(), &DesktopPresence::stopRequested);
    bus.call(u"Play"_s);
    bus.call(u"PlayPause"_s);
    bus.call(u"Stop"_s);
    QTRY_COMPARE(stop.size(), 1);
    QCOMPARE(bus.player.calls()->count(u"play"_s), plays);
}

QUILLMERE_TEST(MprisControlTest, QGuiApplication)

} // namespace quillmere

#include "MprisControlTest.moc"
