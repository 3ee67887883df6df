#include "DesktopPresence.h"

#include "FakeScreenSaver.h"
#include "PrivateBus.h"
#include "ScriptedVideoPlayer.h"
#include "TestMain.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

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
    void initTestCase();
    void init();
    void cleanup();
    void screensaverIsInhibitedWhilePlaying();
    void screensaverIsInhibitedWhileWaitingForData();
    void screensaverIsAllowedWhenPlaybackStops_data();
    void screensaverIsAllowedWhenPlaybackStops();
    void screensaverIsAllowedWhenPresenceIsDestroyed();
    void inhibitionAnsweredAfterDestructionIsReleased();
    void connectionIsClosedIfScreensaverNeverAnswers();
    void successivePlayersLeakNothing();
    void busFailureIsHandled();
    void presenceWithoutBusDoesNothing_data();
    void presenceWithoutBusDoesNothing();
    void hangingBusBlocksNobody();
    void busAddressComesFromEnvironment_data();
    void busAddressComesFromEnvironment();
    void busAddressFallsBackToRuntimeFolder();

private:
    std::unique_ptr<DesktopPresence> createPresence(const QString& address);
    std::unique_ptr<DesktopPresence> createPresence() { return createPresence(m_bus->address()); }
    QStringList playersOnBus();

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<FakeScreenSaver> m_screenSaver;
    std::unique_ptr<ScriptedVideoPlayer> m_player;
};

void DesktopPresenceTest::initTestCase()
{
    QGuiApplication::setApplicationDisplayName(u"A Set"_s);
}

void DesktopPresenceTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    m_screenSaver = std::make_unique<FakeScreenSaver>(m_bus->connect());
    m_player = std::make_unique<ScriptedVideoPlayer>();
    m_player->setItem(std::make_shared<PlayerItem>(QUrl(u"https://hub.invalid/tape.m3u8"_s)));
}

void DesktopPresenceTest::cleanup()
{
    m_player.reset();
    m_screenSaver.reset();
    m_bus.reset();
}

std::unique_ptr<DesktopPresence> DesktopPresenceTest::createPresence(const QString& address)
{
    return std::make_unique<DesktopPresence>(*m_player, u"A tape plays"_s, address);
}

QStringList DesktopPresenceTest::playersOnBus()
{
    return m_bus->connect().interface()->registeredServiceNames().value().filter(u"org.mpris."_s);
}

void DesktopPresenceTest::screensaverIsInhibitedWhilePlaying()
{
    const auto presence = createPresence();
    m_player->play();
    m_player->showPicture();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    QCOMPARE(m_screenSaver->inhibitions().constFirst().application, u"A Set"_s);
    QCOMPARE(m_screenSaver->inhibitions().constFirst().reason, u"A tape plays"_s);
}

void DesktopPresenceTest::screensaverIsInhibitedWhileWaitingForData()
{
    const auto presence = createPresence();
    m_player->play();
    m_player->showPicture();
    m_player->setWaiting(true);
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    QCOMPARE(m_player->timeControl(), VideoPlayer::TimeControl::WaitingToPlay);
}

void DesktopPresenceTest::screensaverIsAllowedWhenPlaybackStops_data()
{
    using Event = std::function<void(ScriptedVideoPlayer&)>;
    QTest::addColumn<Event>("event");
    QTest::newRow("paused") << Event([](ScriptedVideoPlayer& player) { player.pause(); });
    QTest::newRow("played to the end") << Event([](ScriptedVideoPlayer& player) { player.end(); });
    QTest::newRow("failed") << Event([](ScriptedVideoPlayer& player) { player.fail({}); });
    QTest::newRow("item removed") << Event([](ScriptedVideoPlayer& player) { player.setItem(nullptr); });
}

void DesktopPresenceTest::screensaverIsAllowedWhenPlaybackStops()
{
    QFETCH(const std::function<void(ScriptedVideoPlayer&)>, event);
    const auto presence = createPresence();
    m_player->play();
    m_player->showPicture();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    event(*m_player);
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
}

void DesktopPresenceTest::screensaverIsAllowedWhenPresenceIsDestroyed()
{
    auto presence = createPresence();
    m_player->play();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    presence.reset();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
    QTRY_COMPARE(playersOnBus(), QStringList());
}

void DesktopPresenceTest::inhibitionAnsweredAfterDestructionIsReleased()
{
    m_screenSaver->setReplyDelayed(true);
    auto presence = createPresence();
    m_player->play();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    presence.reset();
    // The player is removed from the bus at once; the connection stays open for the answer.
    QTRY_COMPARE(playersOnBus(), QStringList());
    m_screenSaver->sendDelayedReplies();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
}

void DesktopPresenceTest::connectionIsClosedIfScreensaverNeverAnswers()
{
    auto bus = m_bus->connect();
    const auto connections = [&] { return bus.interface()->registeredServiceNames().value().size(); };
    const auto before = connections();
    m_screenSaver->setReplyDelayed(true);
    auto presence = createPresence();
    m_player->play();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    presence.reset();
    QTRY_COMPARE_WITH_TIMEOUT(connections(), before, 10000);
}

void DesktopPresenceTest::successivePlayersLeakNothing()
{
    const auto descriptors = [] {
        return QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size();
    };
    const auto threads = [] { return QDir(u"/proc/self/task"_s).entryList(QDir::NoDotAndDotDot | QDir::Dirs).size(); };
    const auto playOne = [this] {
        const auto presence = createPresence();
        m_player->play();
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
        m_player->pause();
    };
    playOne();
    QTRY_COMPARE(playersOnBus(), QStringList());
    const auto openBefore = descriptors();
    const auto threadsBefore = threads();
    for (int i = 0; i < 50; ++i)
        playOne();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
    QTRY_VERIFY(descriptors() <= openBefore);
    QVERIFY(threads() <= threadsBefore);
}

void DesktopPresenceTest::busFailureIsHandled()
{
    auto presence = createPresence();
    m_player->play();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    m_bus->end();
    m_player->pause();
    m_player->moveTo(100);
    m_player->play();
    presence.reset();
    createPresence()->setObjectName(u"destroyed at once"_s);
}

void DesktopPresenceTest::presenceWithoutBusDoesNothing_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("none") << QString();
    QTest::newRow("a socket that is not there") << u"unix:path=/nowhere/bus"_s;
    QTest::newRow("disabled") << u"disabled:"_s;
    QTest::newRow("no address") << u"unix"_s;
}

void DesktopPresenceTest::presenceWithoutBusDoesNothing()
{
    QFETCH(const QString, address);
    auto presence = createPresence(address);
    m_player->play();
    m_player->moveTo(100);
    m_player->pause();
    presence.reset();
    QCOMPARE(m_screenSaver->inhibitCalls(), 0);
}

void DesktopPresenceTest::hangingBusBlocksNobody()
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

void DesktopPresenceTest::busAddressComesFromEnvironment_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QString>("address");
    QTest::newRow("an address") << QByteArray("unix:path=/a,guid=1") << u"unix:path=/a,guid=1"_s;
    QTest::newRow("one that would start a bus") << QByteArray("autolaunch:") << QString();
}

void DesktopPresenceTest::busAddressComesFromEnvironment()
{
    QFETCH(const QByteArray, variable);
    qputenv("DBUS_SESSION_BUS_ADDRESS", variable);
    QTEST(SessionBus::address(), "address");
}

void DesktopPresenceTest::busAddressFallsBackToRuntimeFolder()
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

QUILLMERE_TEST(DesktopPresenceTest, QGuiApplication)

} // namespace quillmere

#include "DesktopPresenceTest.moc"
