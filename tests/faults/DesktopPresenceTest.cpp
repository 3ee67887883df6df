#include "DesktopPresence.h"

#include "FakeScreenSaver.h"
#include "PrivateBus.h"
#include "ProcessResources.h"
#include "Rows.h"
#include "ScriptedVideoPlayer.h"
#include "TestMain.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** A bus socket that accepts connections and never answers. */
class SilentBus
{
public:
    SilentBus() : m_socket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        qstrncpy(name.sun_path, QFile::encodeName(path()).constData(), sizeof(name.sun_path));
        m_listens =
            bind(m_socket, reinterpret_cast<const sockaddr*>(&name), sizeof(name)) == 0 && listen(m_socket, 5) == 0;
    }
    ~SilentBus() { close(m_socket); }
    SilentBus(const SilentBus&) = delete;
    SilentBus& operator=(const SilentBus&) = delete;

    bool listens() const { return m_listens; }
    QString path() const { return m_folder.filePath(u"bus"_s); }

private:
    QTemporaryDir m_folder;
    int m_socket;
    bool m_listens = false;
};

} // namespace

/** What a DesktopPresence does on a real bus. */
class DesktopPresenceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QGuiApplication::setApplicationDisplayName(u"A Set"_s); }

    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_bus = std::make_unique<PrivateBus>();
        m_screenSaver = std::make_unique<FakeScreenSaver>(m_bus->connect());
        m_player = std::make_unique<ScriptedVideoPlayer>();
        m_player->setItem(std::make_shared<PlayerItem>(QUrl(u"https://hub.invalid/tape.m3u8"_s)));
    }

    void cleanup()
    {
        m_player.reset();
        m_screenSaver.reset();
        m_bus.reset();
    }

    void screensaverIsInhibitedWhileWaitingForData()
    {
        const auto presence = createPresence();
        m_player->play();
        m_player->showPicture();
        m_player->setWaiting(true);
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
        QCOMPARE(m_player->timeControl(), VideoPlayer::TimeControl::WaitingToPlay);
    }

    void screensaverIsInhibitedUntilPlaybackStops_data()
    {
        rows<Event>({"event"}, {{"paused", [](ScriptedVideoPlayer& player) { player.pause(); }},
                                {"played to the end", [](ScriptedVideoPlayer& player) { player.end(); }},
                                {"failed", [](ScriptedVideoPlayer& player) { player.fail({}); }},
                                {"item removed", [](ScriptedVideoPlayer& player) { player.setItem(nullptr); }}});
    }
    void screensaverIsInhibitedUntilPlaybackStops()
    {
        QFETCH(const Event, event);
        const auto presence = createPresence();
        m_player->play();
        m_player->showPicture();
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
        QCOMPARE(m_screenSaver->inhibitions().constFirst().application, u"A Set"_s);
        QCOMPARE(m_screenSaver->inhibitions().constFirst().reason, u"A tape plays"_s);
        event(*m_player);
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
    }

    void screensaverIsAllowedWhenPresenceIsDestroyed()
    {
        auto presence = inhibit();
        presence.reset();
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
        QTRY_COMPARE(playersOnBus(), QStringList());
    }

    void inhibitionAnsweredAfterDestructionIsReleased()
    {
        m_screenSaver->setReplyDelayed(true);
        auto presence = inhibit();
        presence.reset();
        // The player is removed from the bus at once; the connection stays open for the answer.
        QTRY_COMPARE(playersOnBus(), QStringList());
        m_screenSaver->sendDelayedReplies();
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
    }

    void connectionIsClosedIfScreensaverNeverAnswers()
    {
        auto bus = m_bus->connect();
        const auto connections = [&] { return bus.interface()->registeredServiceNames().value().size(); };
        const auto before = connections();
        m_screenSaver->setReplyDelayed(true);
        auto presence = inhibit();
        presence.reset();
        QTRY_COMPARE_WITH_TIMEOUT(connections(), before, 10000);
    }

    void successivePlayersLeakNothing()
    {
        const auto playOne = [this] {
            const auto presence = inhibit();
            m_player->pause();
        };
        playOne();
        QTRY_COMPARE(playersOnBus(), QStringList());
        const ProcessResources before;
        for (int i = 0; i < 50; ++i)
            playOne();
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
        QTRY_VERIFY2(ProcessResources().isWithin(before), ProcessResources().text() + " after " + before.text());
    }

    void busFailureIsHandled()
    {
        auto presence = inhibit();
        m_bus->end();
        m_player->pause();
        m_player->moveTo(100);
        m_player->play();
        presence.reset();
        createPresence()->setObjectName(u"destroyed at once"_s);
    }

    void presenceWithoutBusDoesNothing_data()
    {
        rows<QString>({"address"}, {{"none", QString()},
                                    {"a socket that is not there", u"unix:path=/nowhere/bus"_s},
                                    {"disabled", u"disabled:"_s},
                                    {"no address", u"unix"_s}});
    }
    void presenceWithoutBusDoesNothing()
    {
        QFETCH(const QString, address);
        auto presence = createPresence(address);
        m_player->play();
        m_player->moveTo(100);
        m_player->pause();
        presence.reset();
        QCOMPARE(m_screenSaver->inhibitCalls(), 0);
    }

    void hangingBusBlocksNobody()
    {
        // Creates the worker thread, so that it is not measured.
        createPresence();
        QTRY_COMPARE(playersOnBus(), QStringList());
        auto silent = std::make_unique<SilentBus>();
        QVERIFY(silent->listens());
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 20; ++i) {
            const auto presence = createPresence("unix:path="_L1 + silent->path());
            m_player->play();
            m_player->moveTo(i * 10);
            m_player->pause();
        }
        const qint64 passed = timer.elapsed();
        QVERIFY2(passed < 100, qPrintable(QString::number(passed)));
        // After the hanging bus is closed, the next player is announced.
        silent.reset();
        const auto presence = createPresence();
        QTRY_COMPARE(playersOnBus().size(), 1);
    }

    void busAddressComesFromEnvironment_data()
    {
        rows<QByteArray, QString>({"variable", "address"},
                                  {{"an address", "unix:path=/a,guid=1", u"unix:path=/a,guid=1"_s},
                                   {"one that would start a bus", "autolaunch:", QString()}});
    }
    void busAddressComesFromEnvironment()
    {
        QFETCH(const QByteArray, variable);
        qputenv("DBUS_SESSION_BUS_ADDRESS", variable);
        QTEST(SessionBus::address(), "address");
    }

    void busAddressFallsBackToRuntimeFolder()
    {
        const QTemporaryDir runtime;
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
        QCOMPARE(SessionBus::address(), QString());
        QFile socket(runtime.filePath(u"bus"_s));
        QVERIFY(socket.open(QIODevice::WriteOnly));
        QCOMPARE(SessionBus::address(), "unix:path="_L1 + socket.fileName());
        qunsetenv("XDG_RUNTIME_DIR");
        QCOMPARE(SessionBus::address(), QString());
    }

private:
    using Event = std::function<void(ScriptedVideoPlayer&)>;

    std::unique_ptr<DesktopPresence> createPresence(const QString& address)
    {
        return std::make_unique<DesktopPresence>(*m_player, u"A tape plays"_s, address);
    }

    std::unique_ptr<DesktopPresence> createPresence() { return createPresence(m_bus->address()); }
    /** Plays, and waits until the screensaver is inhibited. */
    std::unique_ptr<DesktopPresence> inhibit()
    {
        auto presence = createPresence();
        m_player->play();
        [this] { QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1); }();
        return presence;
    }

    QStringList playersOnBus()
    {
        return m_bus->connect().interface()->registeredServiceNames().value().filter(u"org.mpris."_s);
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<FakeScreenSaver> m_screenSaver;
    std::unique_ptr<ScriptedVideoPlayer> m_player;
};

QUILLMERE_TEST(DesktopPresenceTest, QGuiApplication)

} // namespace quillmere

#include "DesktopPresenceTest.moc"
