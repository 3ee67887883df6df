#include "KeyRepeat.h"
#include "ScriptedClock.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

class KeyRepeatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void heldButtonRepeatsAtExpectedTimes();
    void heldButtonRepeatsExpectedNumberOfTimes_data();
    void heldButtonRepeatsExpectedNumberOfTimes();
    void releaseQueuedBehindDueRepeatSuppressesRepeat();
    void missedRepeatsAreDropped();
    void lateRepeatIsNotFollowedAtOnceByNext_data();
    void lateRepeatIsNotFollowedAtOnceByNext();
    void resumeAfterReleaseLosesNoRepeat();
    void nextPressStartsWithFirstDelay();
    void repeatStopsWhenDestroyed();
};

void KeyRepeatTest::heldButtonRepeatsAtExpectedTimes()
{
    ScriptedClock clock;
    clock.advance(12345ms);
    QList<int> steps;
    const auto pressed = clock.elapsed();
    KeyRepeat repeat(clock, [&] { steps.append(int((clock.elapsed() - pressed).count())); });
    repeat.press();
    clock.advance(2130ms);
    QCOMPARE(steps, (QList<int>{400, 525, 650, 775, 900, 1025, 1150, 1275, 1400, 1525, 1650, 1775, 1900, 2000, 2040,
                                2080, 2120}));
}

void KeyRepeatTest::heldButtonRepeatsExpectedNumberOfTimes_data()
{
    QTest::addColumn<int>("time");
    QTest::addColumn<int>("steps");
    QTest::newRow("just before the first repeat") << 399 << 0;
    QTest::newRow("400 ms") << 400 << 1;
    QTest::newRow("1 s") << 1000 << 5;
    QTest::newRow("2 s") << 2000 << 14;
    QTest::newRow("3 s") << 3000 << 39;
    QTest::newRow("10 s") << 10000 << 214;
}

void KeyRepeatTest::heldButtonRepeatsExpectedNumberOfTimes()
{
    QFETCH(int, time);
    ScriptedClock clock;
    int steps = 0;
    KeyRepeat repeat(clock, [&] { ++steps; });
    repeat.press();
    clock.advance(std::chrono::milliseconds(time));
    QTEST(steps, "steps");
}

void KeyRepeatTest::releaseQueuedBehindDueRepeatSuppressesRepeat()
{
    ScriptedClock clock;
    int steps = 0;
    KeyRepeat repeat(clock, [&] { ++steps; });
    repeat.press();
    // The release is due at the same time as the repeat, and is queued after it.
    const auto queued = clock.after(400ms, [&] { repeat.release(); });
    clock.advance(10s);
    QCOMPARE(steps, 0);
}

void KeyRepeatTest::missedRepeatsAreDropped()
{
    ScriptedClock clock;
    int steps = 0;
    KeyRepeat repeat(clock, [&] { ++steps; });
    repeat.press();
    clock.advance(2500ms);
    steps = 0;
    clock.stall(300ms);
    clock.advance(0ms);
    QCOMPARE(steps, 1);
    clock.advance(40ms);
    QCOMPARE(steps, 2);
}

void KeyRepeatTest::lateRepeatIsNotFollowedAtOnceByNext_data()
{
    QTest::addColumn<int>("late");
    QTest::addColumn<int>("next");
    QTest::newRow("at 8 a second") << 640 << 775;
    QTest::newRow("at 25 a second") << 2079 << 2120;
}

void KeyRepeatTest::lateRepeatIsNotFollowedAtOnceByNext()
{
    QFETCH(int, late);
    QFETCH(int, next);
    ScriptedClock clock;
    QList<int> steps;
    KeyRepeat repeat(clock, [&] { steps.append(int(clock.elapsed().count())); });
    repeat.press();
    clock.advance(std::chrono::milliseconds(late - 120));
    steps.clear();
    clock.stall(120ms);
    clock.advance(std::chrono::milliseconds(next - late));
    QCOMPARE(steps, (QList<int>{late, next}));
}

void KeyRepeatTest::resumeAfterReleaseLosesNoRepeat()
{
    ScriptedClock clock;
    int steps = 0;
    KeyRepeat repeat(clock, [&] { ++steps; });
    repeat.press();
    // The release and the resumed press arrive after the repeat is due but before it is delivered.
    const auto queued = clock.after(400ms, [&] {
        repeat.release();
        repeat.resume();
    });
    clock.advance(400ms);
    QCOMPARE(steps, 1);
    clock.advance(125ms);
    QCOMPARE(steps, 2);
}

void KeyRepeatTest::nextPressStartsWithFirstDelay()
{
    ScriptedClock clock;
    int steps = 0;
    KeyRepeat repeat(clock, [&] { ++steps; });
    repeat.press();
    clock.advance(3s);
    repeat.release();
    clock.advance(10s);
    QCOMPARE(steps, 39);
    QCOMPARE(clock.pendingTimers(), 0);
    repeat.press();
    clock.advance(399ms);
    QCOMPARE(steps, 39);
    clock.advance(601ms);
    QCOMPARE(steps, 44);
}

void KeyRepeatTest::repeatStopsWhenDestroyed()
{
    ScriptedClock clock;
    int steps = 0;
    {
        KeyRepeat repeat(clock, [&] { ++steps; });
        repeat.press();
    }
    clock.advance(1s);
    QCOMPARE(steps, 0);
}

QUILLMERE_TEST(KeyRepeatTest, QGuiApplication)

} // namespace quillmere

#include "KeyRepeatTest.moc"
