#include "DesktopPresence.h"

#include "PrivateBus.h"
#include "ScriptedVideoPlayer.h"
#include "StandInScreenSaver.h"

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

namespace {

/** A bus that takes connections and never says a word, until it goes. */
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

/** What the desktop is told of a player, on a real bus. */
class DesktopPresenceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void theScreensaverIsAwayWhileItPlays();
    void waitingForDataIsPlaying();
    void theScreensaverIsAllowedAgain_data();
    void theScreensaverIsAllowedAgain();
    void leavingAllowsItAgain();
    void aScreensaverThatAnswersAfterTheLeavingIsAllowedToo();
    void aScreensaverThatNeverAnswersLosesTheConnection();
    void playersOneAfterTheOtherLeaveNothingBehind();
    void aBusThatDiesIsNoTrouble();
    void withoutABusNothingHappens_data();
    void withoutABusNothingHappens();
    void aBusThatHangsHoldsNobody();
    void theBusIsWhereTheEnvironmentSays_data();
    void theBusIsWhereTheEnvironmentSays();
    void theBusIsInTheRuntimeFolderOtherwise();

private:
    std::unique_ptr<DesktopPresence> present(const QString& address);
    std::unique_ptr<DesktopPresence> present() { return present(m_bus->address()); }
    QStringList playersOnBus();

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<StandInScreenSaver> m_screenSaver;
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
    m_screenSaver = std::make_unique<StandInScreenSaver>(m_bus->connect());
    m_player = std::make_unique<ScriptedVideoPlayer>();
    m_player->setItem(std::make_shared<PlayerItem>(QUrl(u"https://hub.invalid/tape.m3u8"_s)));
}

void DesktopPresenceTest::cleanup()
{
    m_player.reset();
    m_screenSaver.reset();
    m_bus.reset();
}

std::unique_ptr<DesktopPresence> DesktopPresenceTest::present(const QString& address)
{
    return std::make_unique<DesktopPresence>(*m_player, u"A tape plays"_s, address);
}

QStringList DesktopPresenceTest::playersOnBus()
{
    return m_bus->connect().interface()->registeredServiceNames().value().filter(u"org.mpris."_s);
}

void DesktopPresenceTest::theScreensaverIsAwayWhileItPlays()
{
    const auto presence = present();
    m_player->play();
    m_player->showPicture();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    QCOMPARE(m_screenSaver->inhibitions().constFirst().application, u"A Set"_s);
    QCOMPARE(m_screenSaver->inhibitions().constFirst().reason, u"A tape plays"_s);
}

void DesktopPresenceTest::waitingForDataIsPlaying()
{
    const auto presence = present();
    m_player->play();
    m_player->showPicture();
    m_player->setWaiting(true);
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    QCOMPARE(m_player->timeControl(), VideoPlayer::TimeControl::WaitingToPlay);
}

void DesktopPresenceTest::theScreensaverIsAllowedAgain_data()
{
    using Happens = std::function<void(ScriptedVideoPlayer&)>;
    QTest::addColumn<Happens>("happens");
    QTest::newRow("paused") << Happens([](ScriptedVideoPlayer& player) { player.pause(); });
    QTest::newRow("played to the end") << Happens([](ScriptedVideoPlayer& player) { player.end(); });
    QTest::newRow("failed") << Happens([](ScriptedVideoPlayer& player) { player.fail({}); });
    QTest::newRow("let go") << Happens([](ScriptedVideoPlayer& player) { player.setItem(nullptr); });
}

void DesktopPresenceTest::theScreensaverIsAllowedAgain()
{
    QFETCH(const std::function<void(ScriptedVideoPlayer&)>, happens);
    const auto presence = present();
    m_player->play();
    m_player->showPicture();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    happens(*m_player);
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
}

void DesktopPresenceTest::leavingAllowsItAgain()
{
    auto presence = present();
    m_player->play();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    presence.reset();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
    QTRY_COMPARE(playersOnBus(), QStringList());
}

void DesktopPresenceTest::aScreensaverThatAnswersAfterTheLeavingIsAllowedToo()
{
    m_screenSaver->setLate(true);
    auto presence = present();
    m_player->play();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    presence.reset();
    // The player has gone from the bus at once, its connection waits.
    QTRY_COMPARE(playersOnBus(), QStringList());
    m_screenSaver->answerNow();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
}

void DesktopPresenceTest::aScreensaverThatNeverAnswersLosesTheConnection()
{
    auto bus = m_bus->connect();
    const auto connections = [&] { return bus.interface()->registeredServiceNames().value().size(); };
    const auto before = connections();
    m_screenSaver->setLate(true);
    auto presence = present();
    m_player->play();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    presence.reset();
    QTRY_COMPARE_WITH_TIMEOUT(connections(), before, 10000);
}

void DesktopPresenceTest::playersOneAfterTheOtherLeaveNothingBehind()
{
    const auto descriptors = [] {
        return QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size();
    };
    const auto threads = [] { return QDir(u"/proc/self/task"_s).entryList(QDir::NoDotAndDotDot | QDir::Dirs).size(); };
    const auto playOne = [this] {
        const auto presence = present();
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

void DesktopPresenceTest::aBusThatDiesIsNoTrouble()
{
    auto presence = present();
    m_player->play();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    m_bus->end();
    m_player->pause();
    m_player->moveTo(100);
    m_player->play();
    presence.reset();
    present()->setObjectName(u"made and gone"_s);
}

void DesktopPresenceTest::withoutABusNothingHappens_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("none") << QString();
    QTest::newRow("a socket that is not there") << u"unix:path=/nowhere/bus"_s;
    QTest::newRow("disabled") << u"disabled:"_s;
    QTest::newRow("no address") << u"unix"_s;
}

void DesktopPresenceTest::withoutABusNothingHappens()
{
    QFETCH(const QString, address);
    auto presence = present(address);
    m_player->play();
    m_player->moveTo(100);
    m_player->pause();
    presence.reset();
    QCOMPARE(m_screenSaver->asked(), 0);
}

void DesktopPresenceTest::aBusThatHangsHoldsNobody()
{
    // Threads are warm.
    present();
    QTRY_COMPARE(playersOnBus(), QStringList());
    auto silent = std::make_unique<SilentBus>();
    QVERIFY(silent->listens());
    QElapsedTimer taken;
    taken.start();
    for (int i = 0; i < 20; ++i) {
        const auto presence = present("unix:path="_L1 + silent->path());
        m_player->play();
        m_player->moveTo(i * 10);
        m_player->pause();
    }
    const qint64 passed = taken.elapsed();
    QVERIFY2(passed < 100, qPrintable(QString::number(passed)));
    // Once it goes, the next player is there again.
    silent.reset();
    const auto presence = present();
    QTRY_COMPARE(playersOnBus().size(), 1);
}

void DesktopPresenceTest::theBusIsWhereTheEnvironmentSays_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QString>("address");
    QTest::newRow("an address") << QByteArray("unix:path=/a,guid=1") << u"unix:path=/a,guid=1"_s;
    QTest::newRow("one that would start a bus") << QByteArray("autolaunch:") << QString();
}

void DesktopPresenceTest::theBusIsWhereTheEnvironmentSays()
{
    QFETCH(const QByteArray, variable);
    qputenv("DBUS_SESSION_BUS_ADDRESS", variable);
    QTEST(SessionBus::address(), "address");
}

void DesktopPresenceTest::theBusIsInTheRuntimeFolderOtherwise()
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

QTEST_MAIN(DesktopPresenceTest)
#include "DesktopPresenceTest.moc"
