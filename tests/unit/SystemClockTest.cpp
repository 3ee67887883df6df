#include "SystemClock.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

class SystemClockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nowIsLocalTime()
    {
        const QDateTime before = QDateTime::currentDateTime();
        const QDateTime now = SystemClock().now();
        QVERIFY(now >= before && now <= QDateTime::currentDateTime());
        QCOMPARE(now.timeSpec(), Qt::LocalTime);
    }

    void timerFiresOnceFromEventLoopAndNotEarly()
    {
        SystemClock clock;
        int calls = 0;
        const auto start = clock.elapsed();
        const auto timer = clock.after(30ms, [&] { ++calls; });
        QCOMPARE(calls, 0);
        QTRY_COMPARE(calls, 1);
        QVERIFY(clock.elapsed() - start >= 30ms);
        QTest::qWait(50);
        QCOMPARE(calls, 1);
    }

    void negativeDelayFiresAtOnce()
    {
        SystemClock clock;
        bool called = false;
        const auto timer = clock.after(-5s, [&] { called = true; });
        QVERIFY(!called);
        QTRY_VERIFY(called);
    }

    void timersFireInOrderOfTimes()
    {
        SystemClock clock;
        QList<int> order;
        const auto late = clock.after(60ms, [&] { order.append(2); });
        const auto early = clock.after(10ms, [&] { order.append(1); });
        QTRY_COMPARE(order, (QList<int>{1, 2}));
    }

    void destroyedTimerDoesNotFire()
    {
        SystemClock clock;
        bool called = false;
        auto timer = clock.after(1ms, [&] { called = true; });
        timer.reset();
        QTest::qWait(20);
        QVERIFY(!called);
    }

    void callbackMayReplaceItsTimer()
    {
        SystemClock clock;
        int ticks = 0;
        std::unique_ptr<Clock::Timer> timer;
        const std::function<void()> tick = [&] {
            timer.reset();
            if (++ticks < 3)
                timer = clock.after(1ms, tick);
        };
        timer = clock.after(1ms, tick);
        QTRY_COMPARE(ticks, 3);
        QVERIFY(!timer);
    }
};

QUILLMERE_TEST(SystemClockTest, QCoreApplication)

} // namespace quillmere

#include "SystemClockTest.moc"
