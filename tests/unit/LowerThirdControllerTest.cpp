#include "LowerThirdController.h"
#include "ScriptedClock.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

/** How long a lower third stays. */
class LowerThirdControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsThereFromTheBeginning();
    void itGoesAfterEightSecondsForGood();
    void theWallClockHasNoSay();
    void oneThatIsMadeAnewStartsAgain();
    void oneThatIsGoneWaitsForNothing();
};

void LowerThirdControllerTest::itIsThereFromTheBeginning()
{
    const LowerThirdController lower;
    QVERIFY(lower.isShown());
}

void LowerThirdControllerTest::itGoesAfterEightSecondsForGood()
{
    ScriptedClock clock;
    Timepiece timepiece(clock);
    LowerThirdController lower;
    lower.setTimepiece(&timepiece);
    const QSignalSpy changes(&lower, &LowerThirdController::isShownChanged);
    clock.advance(7999ms);
    QVERIFY(lower.isShown());
    clock.advance(1ms);
    QVERIFY(!lower.isShown());
    clock.advance(1h);
    lower.setTimepiece(nullptr);
    lower.setTimepiece(&timepiece);
    clock.advance(1h);
    QVERIFY(!lower.isShown());
    QCOMPARE(changes.count(), 1);
}

void LowerThirdControllerTest::theWallClockHasNoSay()
{
    ScriptedClock clock;
    Timepiece timepiece(clock);
    LowerThirdController lower;
    lower.setTimepiece(&timepiece);
    clock.advance(1s);
    clock.jumpTo(clock.now().addDays(1));
    clock.advance(6s);
    QVERIFY(lower.isShown());
    clock.jumpTo(clock.now().addDays(-2));
    clock.advance(1s);
    QVERIFY(!lower.isShown());
}

void LowerThirdControllerTest::oneThatIsMadeAnewStartsAgain()
{
    ScriptedClock clock;
    Timepiece timepiece(clock);
    LowerThirdController first;
    first.setTimepiece(&timepiece);
    clock.advance(5s);
    LowerThirdController second;
    second.setTimepiece(&timepiece);
    clock.advance(7s);
    QVERIFY(!first.isShown());
    QVERIFY(second.isShown());
}

void LowerThirdControllerTest::oneThatIsGoneWaitsForNothing()
{
    ScriptedClock clock;
    Timepiece timepiece(clock);
    {
        LowerThirdController lower;
        lower.setTimepiece(&timepiece);
        QCOMPARE(clock.pendingTimers(), 1);
    }
    QCOMPARE(clock.pendingTimers(), 0);
    clock.advance(8s);
}

QTEST_APPLESS_MAIN(LowerThirdControllerTest)
#include "LowerThirdControllerTest.moc"
