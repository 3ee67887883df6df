#include "WakeLock.h"

#include "FakeScreenSaver.h"
#include "PrivateBus.h"
#include "Rows.h"
#include "TestMain.h"

#include <QDBusConnectionInterface>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace quillmere {

/** WakeLock with a screensaver service on a real bus. */
class WakeLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        QGuiApplication::setApplicationDisplayName(u"A Set"_s);
        m_bus = std::make_unique<PrivateBus>();
        m_screenSaver = std::make_unique<FakeScreenSaver>(m_bus->connect());
    }

    void cleanup()
    {
        m_screenSaver.reset();
        m_bus.reset();
    }

    void screensaverIsInhibitedWithoutMediaPlayerWhileLockExists()
    {
        auto wakeLock = createLock();
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
        QCOMPARE(m_screenSaver->inhibitions().constFirst().application, u"A Set"_s);
        QCOMPARE(m_screenSaver->inhibitions().constFirst().reason, u"Watching the news"_s);
        const QStringList names = m_bus->connect().interface()->registeredServiceNames();
        QCOMPARE(names.filter(u"mpris"_s, Qt::CaseInsensitive), QStringList());
        wakeLock.reset();
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
        QCOMPARE(m_screenSaver->inhibitCalls(), 1);
    }

    void lockDestroyedAtOnceLeavesNoInhibition()
    {
        for (int time = 0; time < 20; ++time)
            createLock().reset();
        auto wakeLock = createLock();
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
        wakeLock.reset();
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
    }

    void inhibitionAnsweredAfterDestructionIsReleased()
    {
        m_screenSaver->setReplyDelayed(true);
        auto wakeLock = createLock();
        QTRY_COMPARE(m_screenSaver->inhibitCalls(), 1);
        wakeLock.reset();
        m_screenSaver->sendDelayedReplies();
        QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
    }

    void lockWithoutBusDoesNothing_data()
    {
        rows<QString>(
            {"address"},
            {{"none", QString()}, {"nobody there", u"unix:path=/nowhere/bus"_s}, {"disabled", u"disabled:"_s}});
    }
    void lockWithoutBusDoesNothing()
    {
        QFETCH(const QString, address);
        const WakeLock wakeLock(u"Watching the news"_s, address);
        QCoreApplication::processEvents();
    }

private:
    std::unique_ptr<WakeLock> createLock()
    {
        return std::make_unique<WakeLock>(u"Watching the news"_s, m_bus->address());
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<FakeScreenSaver> m_screenSaver;
};

QUILLMERE_TEST(WakeLockTest, QCoreApplication)

} // namespace quillmere

#include "WakeLockTest.moc"
