#include "WakeLock.h"

#include "PrivateBus.h"
#include "StandInScreenSaver.h"

#include <QDBusConnectionInterface>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

/** A lock on the screensaver, on a real bus. */
class WakeLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theScreensaverIsAwayForAsLongAsItIsThere();
    void nothingOnTheBusCanBeDriven();
    void oneThatGoesAtOnceLeavesNothingBehind();
    void aScreensaverThatAnswersAfterTheEndIsAllowedToo();
    void withoutABusNothingHappens_data();
    void withoutABusNothingHappens();

private:
    std::unique_ptr<WakeLock> lock() { return std::make_unique<WakeLock>(u"Watching the news"_s, m_bus->address()); }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<StandInScreenSaver> m_screenSaver;
};

void WakeLockTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QGuiApplication::setApplicationDisplayName(u"A Set"_s);
    m_bus = std::make_unique<PrivateBus>();
    m_screenSaver = std::make_unique<StandInScreenSaver>(m_bus->connect());
}

void WakeLockTest::cleanup()
{
    m_screenSaver.reset();
    m_bus.reset();
}

void WakeLockTest::theScreensaverIsAwayForAsLongAsItIsThere()
{
    auto held = lock();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    QCOMPARE(m_screenSaver->inhibitions().constFirst().application, u"A Set"_s);
    QCOMPARE(m_screenSaver->inhibitions().constFirst().reason, u"Watching the news"_s);
    held.reset();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
    QCOMPARE(m_screenSaver->asked(), 1);
}

void WakeLockTest::nothingOnTheBusCanBeDriven()
{
    const auto held = lock();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    const QStringList names = m_bus->connect().interface()->registeredServiceNames();
    QCOMPARE(names.filter(u"mpris"_s, Qt::CaseInsensitive), QStringList());
}

void WakeLockTest::oneThatGoesAtOnceLeavesNothingBehind()
{
    for (int time = 0; time < 20; ++time)
        lock().reset();
    auto last = lock();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 1);
    last.reset();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
}

void WakeLockTest::aScreensaverThatAnswersAfterTheEndIsAllowedToo()
{
    m_screenSaver->setLate(true);
    auto held = lock();
    QTRY_COMPARE(m_screenSaver->asked(), 1);
    held.reset();
    m_screenSaver->answerNow();
    QTRY_COMPARE(m_screenSaver->inhibitions().size(), 0);
}

void WakeLockTest::withoutABusNothingHappens_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("none") << QString();
    QTest::newRow("nobody there") << u"unix:path=/nowhere/bus"_s;
    QTest::newRow("disabled") << u"disabled:"_s;
}

void WakeLockTest::withoutABusNothingHappens()
{
    QFETCH(const QString, address);
    const WakeLock held(u"Watching the news"_s, address);
    QCoreApplication::processEvents();
}

QTEST_GUILESS_MAIN(WakeLockTest)
#include "WakeLockTest.moc"
