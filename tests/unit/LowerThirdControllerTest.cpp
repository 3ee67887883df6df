#include "LowerThirdController.h"
#include "ScriptedClock.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

/** Tests how long a lower third is shown. */
class LowerThirdControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lowerThirdIsShownForFirstEightSeconds()
    {
        ScriptedClock clock;
        LowerThirdController lower;
        QVERIFY(lower.isShown());
        lower.setClock(&clock);
        const QSignalSpy changes(&lower, &LowerThirdController::isShownChanged);
        clock.advance(7999ms);
        QVERIFY(lower.isShown());
        clock.advance(1ms);
        QVERIFY(!lower.isShown());
        clock.advance(1h);
        lower.setClock(nullptr);
        lower.setClock(&clock);
        clock.advance(1h);
        QVERIFY(!lower.isShown());
        QCOMPARE(changes.count(), 1);
    }

    void wallClockChangeHasNoEffect()
    {
        ScriptedClock clock;
        LowerThirdController lower;
        lower.setClock(&clock);
        clock.advance(1s);
        clock.jumpTo(clock.now().addDays(1));
        clock.advance(6s);
        QVERIFY(lower.isShown());
        clock.jumpTo(clock.now().addDays(-2));
        clock.advance(1s);
        QVERIFY(!lower.isShown());
    }

    void newControllerStartsAgain()
    {
        ScriptedClock clock;
        LowerThirdController first;
        first.setClock(&clock);
        clock.advance(5s);
        LowerThirdController second;
        second.setClock(&clock);
        clock.advance(7s);
        QVERIFY(!first.isShown());
        QVERIFY(second.isShown());
    }

    void destroyedControllerHasNoTimer()
    {
        ScriptedClock clock;
        {
            LowerThirdController lower;
            lower.setClock(&clock);
            QCOMPARE(clock.pendingTimers(), 1);
        }
        QCOMPARE(clock.pendingTimers(), 0);
        clock.advance(8s);
    }
};

QUILLMERE_TEST(LowerThirdControllerTest, TestMain::NoApplication)

} // namespace quillmere

#include "LowerThirdControllerTest.moc"
