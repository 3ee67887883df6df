#include "MprisFixture.h"
#include "Rows.h"
#include "TestMain.h"

#include <QRegularExpression>

namespace quillmere {

namespace {

/** Records the D-Bus signals of the player. */
class Listener : public QObject
{
    Q_OBJECT

public:
    explicit Listener(QDBusConnection bus)
    {
        bus.connect(MprisFixture::service, MprisFixture::path, u"org.freedesktop.DBus.Properties"_s,
                    u"PropertiesChanged"_s, this, SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
        bus.connect(MprisFixture::service, MprisFixture::path, MprisFixture::playerInterface, u"Seeked"_s, this,
                    SLOT(onSeeked(qlonglong)));
    }

    QVariantMap changes; ///< the latest value of each property
    QList<qlonglong> seeked;

public Q_SLOTS:
    void onPropertiesChanged(const QString& interface, const QVariantMap& changed, const QStringList&)
    {
        if (interface == MprisFixture::playerInterface)
            changes.insert(changed);
    }
    void onSeeked(qlonglong position) { seeked.append(position); }
};

} // namespace

/** Other programs, such as `playerctl`, read a player on a real bus and receive its signals. */
class MprisTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QGuiApplication::setApplicationDisplayName(u"A Set"_s);
        QGuiApplication::setDesktopFileName(u"a-set"_s);
    }

    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void playerIsRegisteredWhilePresenceExists()
    {
        MprisFixture bus;
        QCOMPARE(bus.playerctl({u"--list-all"_s}), u"quillmere_tv"_s);
        bus.presence.reset();
        QTRY_VERIFY(!bus.isRegistered());
        QCOMPARE(bus.playerctl({u"--list-all"_s}), QString());
    }

    void identityOfProgramIsReported()
    {
        MprisFixture bus;
        const QString root = u"org.mpris.MediaPlayer2"_s;
        QCOMPARE(bus.property(root, u"Identity"_s).toString(), u"A Set"_s);
        QCOMPARE(bus.property(root, u"DesktopEntry"_s).toString(), u"a-set"_s);
        QCOMPARE(bus.property(root, u"CanQuit"_s), QVariant(false));
        QCOMPARE(bus.property(root, u"CanRaise"_s), QVariant(false));
        QCOMPARE(bus.property(root, u"HasTrackList"_s), QVariant(false));
    }

    void playbackStatusAndPositionAreReported()
    {
        MprisFixture bus;
        QCOMPARE(bus.playerctl({u"status"_s}), u"Playing"_s);
        bus.player.moveTo(125.5);
        QVERIFY(bus.playerctl({u"position"_s}).startsWith(u"125.5"_s));
        bus.player.setWaiting(true);
        bus.player.pause();
        QTRY_COMPARE(bus.playerctl({u"status"_s}), u"Paused"_s);
        bus.player.setItem(nullptr);
        QTRY_COMPARE(bus.playerctl({u"status"_s}), u"Stopped"_s);
    }

    void metadataIsReported()
    {
        using Identifier = MetadataItem::Identifier;
        MprisFixture bus({{Identifier::Title, u"The Long Reel"_s},
                          {Identifier::SubTitle, u"DRAMA · Hearing"_s},
                          {Identifier::Description, u"Much is said."_s},
                          {Identifier::Publisher, u"A Label"_s}});
        const QString format = u"{{title}}|{{album}}|{{artist}}|{{xesam:comment}}|{{mpris:length}}"_s;
        QCOMPARE(bus.playerctl({u"metadata"_s, u"--format"_s, format}),
                 u"The Long Reel|DRAMA · Hearing|A Label|Much is said.|3600000000"_s);
    }

    void unknownMetadataIsOmitted()
    {
        MprisFixture bus;
        bus.player.setDuration(0);
        QTRY_COMPARE(bus.metadata().keys(), QStringList{u"mpris:trackid"_s});
    }

    void changesAreSignalled()
    {
        MprisFixture bus;
        const Listener listener(bus.connection);
        bus.player.pause();
        QTRY_COMPARE(listener.changes.value(u"PlaybackStatus"_s), QVariant(u"Paused"_s));
        QCOMPARE(listener.changes.keys(), QStringList{u"PlaybackStatus"_s});
        bus.player.setDuration(60);
        QTRY_VERIFY(listener.changes.contains(u"Metadata"_s));
        const auto reported = qdbus_cast<QVariantMap>(listener.changes.value(u"Metadata"_s));
        QCOMPARE(reported.value(u"mpris:length"_s), QVariant(qlonglong(60000000)));
    }

    void seekedIsSignalledOnlyForJumps()
    {
        MprisFixture bus;
        const Listener listener(bus.connection);
        bus.player.moveTo(0.5);
        bus.player.moveTo(1.5);
        bus.player.moveTo(600);
        bus.player.moveTo(600.25);
        bus.player.moveTo(30);
        QTRY_COMPARE(listener.seeked, (QList<qlonglong>{qlonglong(600000000), qlonglong(30000000)}));
    }

    void textsAreValidAndLimited_data()
    {
        const QString limit(4000, u'x');
        rows<QString, QString>({"text", "expected"},
                               {{"markup", u"<b>A & B</b>"_s, u"<b>A & B</b>"_s},
                                {"beyond the basic plane", u"📼 tape"_s, u"📼 tape"_s},
                                {"half a character", QString(QChar(0xD83D)) + u"tape"_s, u"?tape"_s},
                                {"a zero", u"a"_s + QChar(0) + u"b"_s, u"a"_s},
                                {"very long", QString(1000000, u'x'), limit},
                                {"cut inside a character", limit.chopped(1) + u"📼"_s, limit.chopped(1)}});
    }
    void textsAreValidAndLimited()
    {
        QFETCH(const QString, text);
        using Identifier = MetadataItem::Identifier;
        MprisFixture bus({{Identifier::Title, text}, {Identifier::Description, text}});
        QTEST(bus.metadata().value(u"xesam:title"_s).toString(), "expected");
        QTEST(bus.metadata().value(u"xesam:comment"_s).toStringList().value(0), "expected");
    }

    void secondPlayerGetsOwnBusName()
    {
        MprisFixture bus;
        ScriptedVideoPlayer other;
        const DesktopPresence second(other, u"Another tape plays"_s, bus.daemon.address());
        const QString name = MprisFixture::service + u".instance%1"_s.arg(QCoreApplication::applicationPid());
        QTRY_VERIFY(bus.hasName(name));
        QVERIFY(bus.isRegistered());
    }
};

QUILLMERE_TEST(MprisTest, QGuiApplication)

} // namespace quillmere

#include "MprisTest.moc"
