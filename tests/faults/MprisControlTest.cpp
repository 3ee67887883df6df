#include "MprisFixture.h"
#include "Rows.h"
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

    void playbackIsPausedAndContinued_data()
    {
        rows<QString, QString>({"pause", "play"}, {{"pause and play", u"pause"_s, u"play"_s},
                                                   {"play-pause", u"play-pause"_s, u"play-pause"_s}});
    }
    void playbackIsPausedAndContinued()
    {
        QFETCH(const QString, pause);
        QFETCH(const QString, play);
        MprisFixture bus;
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(bus.playerctl({pause}), QString());
            QTRY_COMPARE(bus.player.timeControl(), VideoPlayer::TimeControl::Paused);
            QCOMPARE(bus.playerctl({play}), QString());
            QTRY_COMPARE(bus.player.timeControl(), VideoPlayer::TimeControl::Playing);
        }
    }

    void stopEmitsStopRequested()
    {
        MprisFixture bus;
        QSignalSpy stop(bus.presence.get(), &DesktopPresence::stopRequested);
        QCOMPARE(bus.playerctl({u"stop"_s}), QString());
        QTRY_COMPARE(stop.size(), 1);
        QCOMPARE(bus.player.timeControl(), VideoPlayer::TimeControl::Playing);
    }

    void playerSeeks_data()
    {
        rows<QString, double>({"position", "target"}, {{"forwards", u"30+"_s, 130.0},
                                                       {"backwards", u"30-"_s, 70.0},
                                                       {"backwards beyond the beginning", u"300-"_s, 0.0},
                                                       {"to a position", u"1800"_s, 1800.0}});
    }
    void playerSeeks()
    {
        QFETCH(const QString, position);
        MprisFixture bus;
        bus.player.moveTo(100);
        QCOMPARE(bus.playerctl({u"position"_s, position}), QString());
        QTRY_COMPARE(bus.player.seeks.size(), 1);
        QTEST(bus.player.seeks.constLast().seconds, "target");
        QCOMPARE(bus.player.seeks.constLast().tolerance, SeekTolerance::AtOrAfter);
    }

    void positionOutsideTapeIsIgnored_data()
    {
        using Limits = std::numeric_limits<qlonglong>;
        rows<qlonglong>({"position"}, {{"before it", -1},
                                       {"after it", 3600000001},
                                       {"far before it", Limits::min()},
                                       {"far after it", Limits::max()}});
    }
    void positionOutsideTapeIsIgnored()
    {
        QFETCH(const qlonglong, position);
        MprisFixture bus;
        const QVariant track = bus.metadata().value(u"mpris:trackid"_s);
        bus.call(u"SetPosition"_s, {track, position});
        bus.call(u"SetPosition"_s, {track, qlonglong(7000000)});
        QTRY_VERIFY(!bus.player.seeks.isEmpty());
        QCOMPARE(bus.player.seeks.constFirst().seconds, 7.0);
    }

    void positionForOtherTrackIsIgnored()
    {
        MprisFixture bus;
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

    void unseekableItemIgnoresSeeks()
    {
        MprisFixture bus;
        bus.player.setSeekable(false);
        QTRY_COMPARE(bus.property(MprisFixture::playerInterface, u"CanSeek"_s), QVariant(false));
        bus.call(u"Seek"_s, {qlonglong(5000000)});
        bus.call(u"SetPosition"_s, {bus.metadata().value(u"mpris:trackid"_s), qlonglong(5000000)});
        bus.call(u"Pause"_s);
        QTRY_COMPARE(bus.player.timeControl(), VideoPlayer::TimeControl::Paused);
        QCOMPARE(bus.player.seeks.size(), 0);
    }

    void failedItemIgnoresPlay()
    {
        MprisFixture bus;
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
};

QUILLMERE_TEST(MprisControlTest, QGuiApplication)

} // namespace quillmere

#include "MprisControlTest.moc"
