#include "ScreenSaverInhibitor.h"

#include "FakeScreenSaver.h"
#include "PrivateBus.h"
#include "Rows.h"
#include "TestMain.h"

#include <QRegularExpression>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Inhibiting the screensaver over a real bus, with services that behave in different ways. */
class ScreenSaverInhibitorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_bus = std::make_unique<PrivateBus>();
    }

    void cleanup()
    {
        m_inhibitor.reset();
        m_bus.reset();
    }

    void inhibitionFollowsInhibitAndAllow_data()
    {
        rows<QString>({"path"}, {{"service", u"/org/freedesktop/ScreenSaver"_s}, {"old service", u"/ScreenSaver"_s}});
    }
    void inhibitionFollowsInhibitAndAllow()
    {
        QFETCH(const QString, path);
        const FakeScreenSaver service(m_bus->connect(), path);
        for (int i = 0; i < 3; ++i) {
            inhibitor().inhibit();
            QTRY_COMPARE(service.inhibitions().size(), 1);
            QCOMPARE(service.inhibitions().constFirst().application, u"A Set"_s);
            QCOMPARE(service.inhibitions().constFirst().reason, u"A tape plays"_s);
            inhibitor().allow();
            QTRY_COMPARE(service.inhibitions().size(), 0);
        }
    }

    void inhibitingTwiceRequestsOnce()
    {
        const auto service = startService();
        inhibitor().inhibit();
        inhibitor().inhibit();
        QTRY_VERIFY(inhibitor().isIdle());
        inhibitor().inhibit();
        QTRY_VERIFY(inhibitor().isIdle());
        QCOMPARE(service->inhibitCalls(), 1);
        inhibitor().allow();
        QTRY_COMPARE(service->inhibitions().size(), 0);
    }

    void inhibitionEndsWhenInhibitorIsDestroyed()
    {
        const auto service = startService();
        inhibitor().inhibit();
        QTRY_VERIFY(service->inhibitCalls() == 1 && inhibitor().isIdle());
        m_inhibitor.reset();
        QTRY_COMPARE(service->inhibitions().size(), 0);
    }

    void inhibitionAnsweredAfterAllowIsReleased()
    {
        const auto service = startService();
        service->setReplyDelayed(true);
        inhibitor().inhibit();
        QTRY_COMPARE(service->inhibitions().size(), 1);
        inhibitor().allow();
        service->sendDelayedReplies();
        QTRY_COMPARE(service->inhibitions().size(), 0);
    }

    void inhibitionRequestedAgainBeforeAnswerIsKept()
    {
        const auto service = startService();
        service->setReplyDelayed(true);
        inhibitor().inhibit();
        QTRY_COMPARE(service->inhibitions().size(), 1);
        inhibitor().allow();
        inhibitor().inhibit();
        service->sendDelayedReplies();
        QTRY_VERIFY(inhibitor().isIdle());
        QCOMPARE(service->inhibitCalls(), 1);
        QCOMPARE(service->inhibitions().size(), 1);
    }

    void serviceThatStartsLaterIsAsked()
    {
        inhibitor().inhibit();
        QTRY_VERIFY(inhibitor().isIdle());
        const auto service = startService();
        QTRY_COMPARE(service->inhibitions().size(), 1);
    }

    void restartedServiceIsAskedAgain()
    {
        auto service = startService();
        inhibitor().inhibit();
        QTRY_VERIFY(service->inhibitCalls() == 1 && inhibitor().isIdle());
        service.reset();
        service = startService();
        QTRY_COMPARE(service->inhibitions().size(), 1);
        inhibitor().allow();
        QTRY_COMPARE(service->inhibitions().size(), 0);
    }

    void serviceRestartedBeforeAnswerIsAskedAgain()
    {
        const QString name = u"dying"_s;
        auto service = std::make_unique<FakeScreenSaver>(QDBusConnection::connectToBus(m_bus->address(), name));
        service->setReplyDelayed(true);
        inhibitor().inhibit();
        QTRY_COMPARE(service->inhibitCalls(), 1);
        service.reset();
        QDBusConnection::disconnectFromBus(name);
        service = startService();
        QTRY_COMPARE(service->inhibitions().size(), 1);
    }

    void newNameOwnerIsAskedWhenHangingServiceEnds()
    {
        const QString name = u"hanging"_s;
        auto hanging = std::make_unique<FakeScreenSaver>(QDBusConnection::connectToBus(m_bus->address(), name));
        hanging->setReplyDelayed(true);
        inhibitor().inhibit();
        QTRY_COMPARE(hanging->inhibitCalls(), 1);
        // The service releases its name first; its connection is closed only after the other service has started.
        hanging.reset();
        const auto service = startService();
        QDBusConnection::disconnectFromBus(name);
        QTRY_COMPARE(service->inhibitions().size(), 1);
    }

    void serviceStartedWhileAllowedIsNotAsked()
    {
        auto service = startService();
        inhibitor().inhibit();
        QTRY_VERIFY(service->inhibitCalls() == 1 && inhibitor().isIdle());
        inhibitor().allow();
        QTRY_VERIFY(inhibitor().isIdle());
        service.reset();
        service = startService();
        // The next request is the first one that this service receives.
        QSignalSpy becameIdle(&inhibitor(), &ScreenSaverInhibitor::becameIdle);
        inhibitor().inhibit();
        QVERIFY(becameIdle.wait());
        QCOMPARE(service->inhibitCalls(), 1);
    }

    void refusedRequestIsRepeatedByNextInhibit()
    {
        const auto service = startService();
        service->setRefusing(true);
        inhibitor().inhibit();
        QTRY_VERIFY(service->inhibitCalls() > 0 && inhibitor().isIdle());
        QCOMPARE(service->inhibitCalls(), 1);
        service->setRefusing(false);
        inhibitor().inhibit();
        QTRY_COMPARE(service->inhibitions().size(), 1);
    }

    void inhibitorIsIdleWhenAllRequestsAreAnswered()
    {
        const auto service = startService();
        service->setReplyDelayed(true);
        QSignalSpy becameIdle(&inhibitor(), &ScreenSaverInhibitor::becameIdle);
        QVERIFY(inhibitor().isIdle());
        inhibitor().inhibit();
        QVERIFY(!inhibitor().isIdle());
        inhibitor().allow();
        service->sendDelayedReplies();
        QTRY_COMPARE(service->inhibitCalls(), 1);
        QVERIFY(becameIdle.isEmpty());
        service->sendDelayedReplies();
        QVERIFY(becameIdle.wait());
        QCOMPARE(service->inhibitions().size(), 0);
    }

    void busFailureIsHandled()
    {
        const auto service = startService();
        inhibitor().inhibit();
        QTRY_VERIFY(service->inhibitCalls() == 1 && inhibitor().isIdle());
        m_bus->end();
        inhibitor().allow();
        inhibitor().inhibit();
        QTRY_VERIFY(inhibitor().isIdle());
        inhibitor().allow();
        m_inhibitor.reset();
    }

    void inhibitorWithoutBusDoesNothing()
    {
        m_bus->end();
        inhibitor().inhibit();
        QTRY_VERIFY(inhibitor().isIdle());
        inhibitor().allow();
        m_inhibitor.reset();
    }

private:
    ScreenSaverInhibitor& inhibitor()
    {
        if (!m_inhibitor)
            m_inhibitor = std::make_unique<ScreenSaverInhibitor>(m_bus->connect(), u"A Set"_s, u"A tape plays"_s);
        return *m_inhibitor;
    }

    /** A screensaver service with its own connection. */
    std::unique_ptr<FakeScreenSaver> startService() { return std::make_unique<FakeScreenSaver>(m_bus->connect()); }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<ScreenSaverInhibitor> m_inhibitor;
};

QUILLMERE_TEST(ScreenSaverInhibitorTest, QCoreApplication)

} // namespace quillmere

#include "ScreenSaverInhibitorTest.moc"
