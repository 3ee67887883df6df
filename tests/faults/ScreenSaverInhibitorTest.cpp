#include "ScreenSaverInhibitor.h"

#include "PrivateBus.h"
#include "StandInScreenSaver.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/** The screensaver is kept away through a real bus, whatever offers it. */
class ScreenSaverInhibitorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theInhibitionComesAndGoes();
    void anInhibitionSaysWhoInhibitsAndWhy();
    void inhibitingTwiceIsOneInhibition();
    void destroyingItEndsTheInhibition();
    void theObjectMayBeAtItsOldPath();
    void anAnswerAfterAllowingIsGivenBackAtOnce();
    void anInhibitionWantedAgainBeforeTheAnswerIsKept();
    void aServiceThatComesLateIsAsked();
    void aServiceThatIsStartedAgainIsAskedAgain();
    void aServiceThatDiesBeforeItsAnswerIsAskedAgain();
    void aServiceThatTakesTheNameFromOneThatHangsIsAskedOnceThatIsGone();
    void aServiceThatIsStartedWhileAllowedIsNotAsked();
    void aRefusalIsTakenUntilTheNextWish();
    void itIsSettledWhenAllIsAnswered();
    void aBusThatDiesIsNoTrouble();
    void withoutABusNothingHappens();

private:
    ScreenSaverInhibitor& inhibitor();
    /** A service on a connection that is not used for anything else. */
    std::unique_ptr<StandInScreenSaver> startService()
    {
        return std::make_unique<StandInScreenSaver>(m_bus->connect());
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<ScreenSaverInhibitor> m_inhibitor;
};

void ScreenSaverInhibitorTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
}

void ScreenSaverInhibitorTest::cleanup()
{
    m_inhibitor.reset();
    m_bus.reset();
}

ScreenSaverInhibitor& ScreenSaverInhibitorTest::inhibitor()
{
    if (!m_inhibitor)
        m_inhibitor = std::make_unique<ScreenSaverInhibitor>(m_bus->connect(), u"A Set"_s, u"A tape plays"_s);
    return *m_inhibitor;
}

void ScreenSaverInhibitorTest::theInhibitionComesAndGoes()
{
    const auto service = startService();
    for (int i = 0; i < 3; ++i) {
        inhibitor().inhibit();
        QTRY_COMPARE(service->inhibitions().size(), 1);
        inhibitor().allow();
        QTRY_COMPARE(service->inhibitions().size(), 0);
    }
}

void ScreenSaverInhibitorTest::anInhibitionSaysWhoInhibitsAndWhy()
{
    const auto service = startService();
    inhibitor().inhibit();
    QTRY_COMPARE(service->inhibitions().size(), 1);
    QCOMPARE(service->inhibitions().constFirst().application, u"A Set"_s);
    QCOMPARE(service->inhibitions().constFirst().reason, u"A tape plays"_s);
}

void ScreenSaverInhibitorTest::inhibitingTwiceIsOneInhibition()
{
    const auto service = startService();
    inhibitor().inhibit();
    inhibitor().inhibit();
    QTRY_VERIFY(inhibitor().isSettled());
    inhibitor().inhibit();
    QTRY_VERIFY(inhibitor().isSettled());
    QCOMPARE(service->asked(), 1);
    inhibitor().allow();
    QTRY_COMPARE(service->inhibitions().size(), 0);
}

void ScreenSaverInhibitorTest::destroyingItEndsTheInhibition()
{
    const auto service = startService();
    inhibitor().inhibit();
    QTRY_VERIFY(service->asked() == 1 && inhibitor().isSettled());
    m_inhibitor.reset();
    QTRY_COMPARE(service->inhibitions().size(), 0);
}

void ScreenSaverInhibitorTest::theObjectMayBeAtItsOldPath()
{
    const StandInScreenSaver service(m_bus->connect(), u"/ScreenSaver"_s);
    inhibitor().inhibit();
    QTRY_COMPARE(service.inhibitions().size(), 1);
    inhibitor().allow();
    QTRY_COMPARE(service.inhibitions().size(), 0);
}

void ScreenSaverInhibitorTest::anAnswerAfterAllowingIsGivenBackAtOnce()
{
    const auto service = startService();
    service->setLate(true);
    inhibitor().inhibit();
    QTRY_COMPARE(service->inhibitions().size(), 1);
    inhibitor().allow();
    service->answerNow();
    QTRY_COMPARE(service->inhibitions().size(), 0);
}

void ScreenSaverInhibitorTest::anInhibitionWantedAgainBeforeTheAnswerIsKept()
{
    const auto service = startService();
    service->setLate(true);
    inhibitor().inhibit();
    QTRY_COMPARE(service->inhibitions().size(), 1);
    inhibitor().allow();
    inhibitor().inhibit();
    service->answerNow();
    QTRY_VERIFY(inhibitor().isSettled());
    QCOMPARE(service->asked(), 1);
    QCOMPARE(service->inhibitions().size(), 1);
}

void ScreenSaverInhibitorTest::aServiceThatComesLateIsAsked()
{
    inhibitor().inhibit();
    QTRY_VERIFY(inhibitor().isSettled());
    const auto service = startService();
    QTRY_COMPARE(service->inhibitions().size(), 1);
}

void ScreenSaverInhibitorTest::aServiceThatIsStartedAgainIsAskedAgain()
{
    auto service = startService();
    inhibitor().inhibit();
    QTRY_VERIFY(service->asked() == 1 && inhibitor().isSettled());
    service.reset();
    service = startService();
    QTRY_COMPARE(service->inhibitions().size(), 1);
    inhibitor().allow();
    QTRY_COMPARE(service->inhibitions().size(), 0);
}

void ScreenSaverInhibitorTest::aServiceThatDiesBeforeItsAnswerIsAskedAgain()
{
    const QString name = u"dying"_s;
    auto service = std::make_unique<StandInScreenSaver>(QDBusConnection::connectToBus(m_bus->address(), name));
    service->setLate(true);
    inhibitor().inhibit();
    QTRY_COMPARE(service->asked(), 1);
    service.reset();
    QDBusConnection::disconnectFromBus(name);
    service = startService();
    QTRY_COMPARE(service->inhibitions().size(), 1);
}

void ScreenSaverInhibitorTest::aServiceThatTakesTheNameFromOneThatHangsIsAskedOnceThatIsGone()
{
    const QString name = u"hanging"_s;
    auto hanging = std::make_unique<StandInScreenSaver>(QDBusConnection::connectToBus(m_bus->address(), name));
    hanging->setLate(true);
    inhibitor().inhibit();
    QTRY_COMPARE(hanging->asked(), 1);
    // Its name goes first, its connection only when the other one is there.
    hanging.reset();
    const auto service = startService();
    QDBusConnection::disconnectFromBus(name);
    QTRY_COMPARE(service->inhibitions().size(), 1);
}

void ScreenSaverInhibitorTest::aServiceThatIsStartedWhileAllowedIsNotAsked()
{
    auto service = startService();
    inhibitor().inhibit();
    QTRY_VERIFY(service->asked() == 1 && inhibitor().isSettled());
    inhibitor().allow();
    QTRY_VERIFY(inhibitor().isSettled());
    service.reset();
    service = startService();
    // The next wish is the first that this service hears of.
    QSignalSpy settled(&inhibitor(), &ScreenSaverInhibitor::settled);
    inhibitor().inhibit();
    QVERIFY(settled.wait());
    QCOMPARE(service->asked(), 1);
}

void ScreenSaverInhibitorTest::aRefusalIsTakenUntilTheNextWish()
{
    const auto service = startService();
    service->setRefusing(true);
    inhibitor().inhibit();
    QTRY_VERIFY(service->asked() > 0 && inhibitor().isSettled());
    QCOMPARE(service->asked(), 1);
    service->setRefusing(false);
    inhibitor().inhibit();
    QTRY_COMPARE(service->inhibitions().size(), 1);
}

void ScreenSaverInhibitorTest::itIsSettledWhenAllIsAnswered()
{
    const auto service = startService();
    service->setLate(true);
    QSignalSpy settled(&inhibitor(), &ScreenSaverInhibitor::settled);
    QVERIFY(inhibitor().isSettled());
    inhibitor().inhibit();
    QVERIFY(!inhibitor().isSettled());
    inhibitor().allow();
    service->answerNow();
    QTRY_COMPARE(service->asked(), 1);
    QVERIFY(settled.isEmpty());
    service->answerNow();
    QVERIFY(settled.wait());
    QCOMPARE(service->inhibitions().size(), 0);
}

void ScreenSaverInhibitorTest::aBusThatDiesIsNoTrouble()
{
    const auto service = startService();
    inhibitor().inhibit();
    QTRY_VERIFY(service->asked() == 1 && inhibitor().isSettled());
    m_bus->end();
    inhibitor().allow();
    inhibitor().inhibit();
    QTRY_VERIFY(inhibitor().isSettled());
    inhibitor().allow();
    m_inhibitor.reset();
}

void ScreenSaverInhibitorTest::withoutABusNothingHappens()
{
    m_bus->end();
    inhibitor().inhibit();
    QTRY_VERIFY(inhibitor().isSettled());
    inhibitor().allow();
    m_inhibitor.reset();
}

QTEST_GUILESS_MAIN(ScreenSaverInhibitorTest)
#include "ScreenSaverInhibitorTest.moc"
