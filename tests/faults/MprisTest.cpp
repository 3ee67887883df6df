#include "DesktopPresence.h"

#include "PrivateBus.h"
#include "ScriptedVideoPlayer.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr auto service = "org.mpris.MediaPlayer2.quillmere_tv"_L1;
constexpr auto path = "/org/mpris/MediaPlayer2"_L1;
constexpr auto playerInterface = "org.mpris.MediaPlayer2.Player"_L1;

/** Hears what the player tells. */
class Listener : public QObject
{
    Q_OBJECT

public:
    explicit Listener(QDBusConnection bus)
    {
        bus.connect(service, path, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s, this,
                    SLOT(take(QString, QVariantMap, QStringList)));
        bus.connect(service, path, playerInterface, u"Seeked"_s, this, SLOT(takeSeeked(qlonglong)));
    }

    QVariantMap changes; ///< the newest of each
    QList<qlonglong> seeked;

public Q_SLOTS:
    void take(const QString& interface, const QVariantMap& changed, const QStringList&)
    {
        if (interface == playerInterface)
            changes.insert(changed);
    }
    void takeSeeked(qlonglong position) { seeked.append(position); }
};

} // namespace

/** Other programs read and drive a player on a real bus, as `playerctl` does. */
class MprisTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void aPlayerIsThereWhileItsScreenIs();
    void theProgramSaysWhoItIs();
    void theStatusIsReadAsItIs();
    void theMetadataIsRead();
    void whatIsNotKnownIsLeftOut();
    void thePositionIsRead();
    void playAndPauseDriveIt();
    void playPauseToggles();
    void stopAsksForTheLeaving();
    void seekingGoesFromWhereItPlays();
    void thePositionIsSet();
    void aPositionOutsideTheTapeIsNotTaken_data();
    void aPositionOutsideTheTapeIsNotTaken();
    void aPositionForAnotherTapeIsNotTaken();
    void aLiveItemCannotBeSought();
    void aFailedItemCannotBePlayed();
    void changesAreTold();
    void aJumpIsToldAndPlayingOnIsNot();
    void textsAreData_data();
    void textsAreData();
    void aSecondPlayerHasANameOfItsOwn();

private:
    /** What `playerctl` prints, in lines; it fails the test when it does not end well. */
    QString playerctl(const QStringList& arguments);
    QVariant property(const QString& interface, const QString& name);
    QVariantMap metadata();
    void call(const QString& method, const QVariantList& arguments = {});
    /** With the scripted player's item playing, and its length known. */
    void present(const QList<MetadataItem>& texts = {});
    bool isThere() { return m_connection->interface()->isServiceRegistered(service); }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QDBusConnection> m_connection;
    std::unique_ptr<ScriptedVideoPlayer> m_player;
    std::unique_ptr<DesktopPresence> m_presence;
};

void MprisTest::initTestCase()
{
    QGuiApplication::setApplicationDisplayName(u"A Set"_s);
    QGuiApplication::setDesktopFileName(u"a-set"_s);
}

void MprisTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    m_connection = std::make_unique<QDBusConnection>(m_bus->connect());
    m_player = std::make_unique<ScriptedVideoPlayer>();
}

void MprisTest::cleanup()
{
    m_presence.reset();
    m_player.reset();
    m_connection.reset();
    m_bus.reset();
}

void MprisTest::present(const QList<MetadataItem>& texts)
{
    const auto item = std::make_shared<PlayerItem>(QUrl(u"https://hub.invalid/tape.m3u8"_s));
    item->setExternalMetadata(texts);
    m_player->setItem(item);
    m_player->setDuration(3600);
    m_player->setSeekable(true);
    m_player->play();
    m_player->showPicture();
    m_presence = std::make_unique<DesktopPresence>(*m_player, u"A tape plays"_s, m_bus->address());
    QTRY_COMPARE(property(playerInterface, u"PlaybackStatus"_s).toString(), u"Playing"_s);
}

QString MprisTest::playerctl(const QStringList& arguments)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(u"playerctl"_s, arguments);
    process.waitForFinished();
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return u"failed: "_s + QString::fromUtf8(process.readAllStandardError());
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QVariant MprisTest::property(const QString& interface, const QString& name)
{
    auto call = QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call << interface << name;
    return QDBusReply<QVariant>(m_connection->call(call)).value();
}

QVariantMap MprisTest::metadata()
{
    return qdbus_cast<QVariantMap>(property(playerInterface, u"Metadata"_s));
}

void MprisTest::call(const QString& method, const QVariantList& arguments)
{
    auto call = QDBusMessage::createMethodCall(service, path, playerInterface, method);
    call.setArguments(arguments);
    QCOMPARE(m_connection->call(call).type(), QDBusMessage::ReplyMessage);
}

void MprisTest::aPlayerIsThereWhileItsScreenIs()
{
    QVERIFY(!isThere());
    present();
    QCOMPARE(playerctl({u"--list-all"_s}), u"quillmere_tv"_s);
    m_presence.reset();
    QTRY_VERIFY(!isThere());
    QCOMPARE(playerctl({u"--list-all"_s}), QString());
}

void MprisTest::theProgramSaysWhoItIs()
{
    present();
    const QString root = u"org.mpris.MediaPlayer2"_s;
    QCOMPARE(property(root, u"Identity"_s).toString(), u"A Set"_s);
    QCOMPARE(property(root, u"DesktopEntry"_s).toString(), u"a-set"_s);
    QCOMPARE(property(root, u"CanQuit"_s), QVariant(false));
    QCOMPARE(property(root, u"CanRaise"_s), QVariant(false));
    QCOMPARE(property(root, u"HasTrackList"_s), QVariant(false));
}

void MprisTest::theStatusIsReadAsItIs()
{
    present();
    QCOMPARE(playerctl({u"status"_s}), u"Playing"_s);
    m_player->setWaiting(true);
    m_player->pause();
    QTRY_COMPARE(playerctl({u"status"_s}), u"Paused"_s);
    m_player->setItem(nullptr);
    QTRY_COMPARE(playerctl({u"status"_s}), u"Stopped"_s);
}

void MprisTest::theMetadataIsRead()
{
    using Identifier = MetadataItem::Identifier;
    present({{Identifier::Title, u"The Long Reel"_s},
             {Identifier::SubTitle, u"DRAMA · Hearing"_s},
             {Identifier::Description, u"Much is said."_s},
             {Identifier::Publisher, u"A Label"_s}});
    const QString format = u"{{title}}|{{album}}|{{artist}}|{{xesam:comment}}|{{mpris:length}}"_s;
    QCOMPARE(playerctl({u"metadata"_s, u"--format"_s, format}),
             u"The Long Reel|DRAMA · Hearing|A Label|Much is said.|3600000000"_s);
}

void MprisTest::whatIsNotKnownIsLeftOut()
{
    present();
    m_player->setDuration(0);
    QTRY_COMPARE(metadata().keys(), QStringList{u"mpris:trackid"_s});
}

void MprisTest::thePositionIsRead()
{
    present();
    m_player->moveTo(125.5);
    QVERIFY(playerctl({u"position"_s}).startsWith(u"125.5"_s));
}

void MprisTest::playAndPauseDriveIt()
{
    present();
    QCOMPARE(playerctl({u"pause"_s}), QString());
    QTRY_COMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Paused);
    QCOMPARE(playerctl({u"play"_s}), QString());
    QTRY_COMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Playing);
}

void MprisTest::playPauseToggles()
{
    present();
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(playerctl({u"play-pause"_s}), QString());
        QTRY_COMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Paused);
        QCOMPARE(playerctl({u"play-pause"_s}), QString());
        QTRY_COMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Playing);
    }
}

void MprisTest::stopAsksForTheLeaving()
{
    present();
    QSignalSpy stop(m_presence.get(), &DesktopPresence::stopRequested);
    QCOMPARE(playerctl({u"stop"_s}), QString());
    QTRY_COMPARE(stop.size(), 1);
    QCOMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Playing);
}

void MprisTest::seekingGoesFromWhereItPlays()
{
    present();
    m_player->moveTo(100);
    QCOMPARE(playerctl({u"position"_s, u"30+"_s}), QString());
    QTRY_COMPARE(m_player->seeks.size(), 1);
    QCOMPARE(m_player->seeks.constLast().seconds, 130.0);
    QCOMPARE(m_player->seeks.constLast().tolerance, SeekTolerance::AtOrAfter);
    m_player->moveTo(20);
    QCOMPARE(playerctl({u"position"_s, u"30-"_s}), QString());
    QTRY_COMPARE(m_player->seeks.size(), 2);
    QCOMPARE(m_player->seeks.constLast().seconds, 0.0);
}

void MprisTest::thePositionIsSet()
{
    present();
    QCOMPARE(playerctl({u"position"_s, u"1800"_s}), QString());
    QTRY_COMPARE(m_player->seeks.size(), 1);
    QCOMPARE(m_player->seeks.constLast().seconds, 1800.0);
}

void MprisTest::aPositionOutsideTheTapeIsNotTaken_data()
{
    QTest::addColumn<qlonglong>("position");
    QTest::newRow("before it") << qlonglong(-1);
    QTest::newRow("after it") << qlonglong(3600000001);
    QTest::newRow("far before it") << std::numeric_limits<qlonglong>::min();
    QTest::newRow("far after it") << std::numeric_limits<qlonglong>::max();
}

void MprisTest::aPositionOutsideTheTapeIsNotTaken()
{
    QFETCH(const qlonglong, position);
    present();
    const QVariant track = metadata().value(u"mpris:trackid"_s);
    call(u"SetPosition"_s, {track, position});
    call(u"SetPosition"_s, {track, qlonglong(7000000)});
    QTRY_VERIFY(!m_player->seeks.isEmpty());
    QCOMPARE(m_player->seeks.constFirst().seconds, 7.0);
}

void MprisTest::aPositionForAnotherTapeIsNotTaken()
{
    present();
    const QVariant before = metadata().value(u"mpris:trackid"_s);
    m_presence.reset();
    QTRY_VERIFY(!isThere());
    present();
    const QVariant track = metadata().value(u"mpris:trackid"_s);
    QVERIFY(track.value<QDBusObjectPath>() != before.value<QDBusObjectPath>());
    call(u"SetPosition"_s, {before, qlonglong(5000000)});
    call(u"SetPosition"_s, {track, qlonglong(7000000)});
    QTRY_VERIFY(!m_player->seeks.isEmpty());
    QCOMPARE(m_player->seeks.constFirst().seconds, 7.0);
}

void MprisTest::aLiveItemCannotBeSought()
{
    present();
    m_player->setSeekable(false);
    QTRY_COMPARE(property(playerInterface, u"CanSeek"_s), QVariant(false));
    call(u"Seek"_s, {qlonglong(5000000)});
    call(u"SetPosition"_s, {metadata().value(u"mpris:trackid"_s), qlonglong(5000000)});
    call(u"Pause"_s);
    QTRY_COMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Paused);
    QCOMPARE(m_player->seeks.size(), 0);
}

void MprisTest::aFailedItemCannotBePlayed()
{
    present();
    m_player->fail({});
    QTRY_COMPARE(property(playerInterface, u"PlaybackStatus"_s).toString(), u"Stopped"_s);
    QCOMPARE(property(playerInterface, u"CanPlay"_s), QVariant(false));
    QCOMPARE(property(playerInterface, u"CanSeek"_s), QVariant(false));
    const auto plays = m_player->calls()->count(u"play"_s);
    QSignalSpy stop(m_presence.get(), &DesktopPresence::stopRequested);
    call(u"Play"_s);
    call(u"PlayPause"_s);
    call(u"Stop"_s);
    QTRY_COMPARE(stop.size(), 1);
    QCOMPARE(m_player->calls()->count(u"play"_s), plays);
}

void MprisTest::changesAreTold()
{
    present();
    const Listener listener(*m_connection);
    m_player->pause();
    QTRY_COMPARE(listener.changes.value(u"PlaybackStatus"_s), QVariant(u"Paused"_s));
    QCOMPARE(listener.changes.keys(), QStringList{u"PlaybackStatus"_s});
    m_player->setDuration(60);
    QTRY_VERIFY(listener.changes.contains(u"Metadata"_s));
    const auto told = qdbus_cast<QVariantMap>(listener.changes.value(u"Metadata"_s));
    QCOMPARE(told.value(u"mpris:length"_s), QVariant(qlonglong(60000000)));
}

void MprisTest::aJumpIsToldAndPlayingOnIsNot()
{
    present();
    const Listener listener(*m_connection);
    m_player->moveTo(0.5);
    m_player->moveTo(1.5);
    m_player->moveTo(600);
    m_player->moveTo(600.25);
    m_player->moveTo(30);
    QTRY_COMPARE(listener.seeked, (QList<qlonglong>{qlonglong(600000000), qlonglong(30000000)}));
}

void MprisTest::textsAreData_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    QTest::newRow("markup") << u"<b>A & B</b>"_s << u"<b>A & B</b>"_s;
    QTest::newRow("beyond the basic plane") << u"📼 tape"_s << u"📼 tape"_s;
    QTest::newRow("half a character") << QString(QChar(0xD83D)) + u"tape"_s << u"?tape"_s;
    QTest::newRow("a zero") << u"a"_s + QChar(0) + u"b"_s << u"a"_s;
    QTest::newRow("very long") << QString(1000000, u'x') << QString(4000, u'x');
    QTest::newRow("cut inside a character") << QString(3999, u'x') + u"📼"_s << QString(3999, u'x');
}

void MprisTest::textsAreData()
{
    QFETCH(const QString, text);
    using Identifier = MetadataItem::Identifier;
    present({{Identifier::Title, text}, {Identifier::Description, text}});
    QTEST(metadata().value(u"xesam:title"_s).toString(), "told");
    QTEST(metadata().value(u"xesam:comment"_s).toStringList().value(0), "told");
}

void MprisTest::aSecondPlayerHasANameOfItsOwn()
{
    present();
    ScriptedVideoPlayer other;
    const DesktopPresence second(other, u"Another tape plays"_s, m_bus->address());
    const QString name = service + u".instance%1"_s.arg(QCoreApplication::applicationPid());
    QTRY_VERIFY(m_connection->interface()->isServiceRegistered(name));
    QVERIFY(isThere());
}

QTEST_MAIN(MprisTest)
#include "MprisTest.moc"
