#include "KeyRepeat.h"
#include "Rows.h"
#include "ScriptedClock.h"
#include "TestMain.h"

#include <QTest>

using namespace std::chrono_literals;

namespace quillmere {

namespace {

/** A pressed button on a scripted clock. */
struct PressedButton
{
    PressedButton() { repeat.press(); }

    ScriptedClock clock;
    int steps = 0;
    KeyRepeat repeat{clock, [this] { ++steps; }};
};

} // namespace

class KeyRepeatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void heldButtonRepeatsAtExpectedTimes()
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
        clock.advance(870ms);
        QCOMPARE(steps.size(), 39);
        clock.advance(7s);
        QCOMPARE(steps.size(), 214);
    }

    void releaseQueuedBehindDueRepeatSuppressesRepeat()
    {
        PressedButton button;
        // The release is due at the same time as the repeat, and is queued after it.
        const auto queued = button.clock.after(400ms, [&] { button.repeat.release(); });
        button.clock.advance(10s);
        QCOMPARE(button.steps, 0);
    }

    void missedRepeatsAreDropped()
    {
        PressedButton button;
        button.clock.advance(2500ms);
        button.steps = 0;
        button.clock.stall(300ms);
        button.clock.advance(0ms);
        QCOMPARE(button.steps, 1);
        button.clock.advance(40ms);
        QCOMPARE(button.steps, 2);
    }

    void lateRepeatIsNotFollowedAtOnceByNext_data()
    {
        rows<int, int>({"late", "next"}, {{"at 8 a second", 640, 775}, {"at 25 a second", 2079, 2120}});
    }
    void lateRepeatIsNotFollowedAtOnceByNext()
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

    void resumeAfterReleaseLosesNoRepeat()
    {
        PressedButton button;
        // The release and the resumed press arrive after the repeat is due but before it is delivered.
        const auto queued = button.clock.after(400ms, [&] {
            button.repeat.release();
            button.repeat.resume();
        });
        button.clock.advance(400ms);
        QCOMPARE(button.steps, 1);
        button.clock.advance(125ms);
        QCOMPARE(button.steps, 2);
    }

    void nextPressStartsWithFirstDelay()
    {
        PressedButton button;
        button.clock.advance(3s);
        button.repeat.release();
        button.clock.advance(10s);
        QCOMPARE(button.steps, 39);
        QCOMPARE(button.clock.pendingTimers(), 0);
        button.repeat.press();
        button.clock.advance(399ms);
        QCOMPARE(button.steps, 39);
        button.clock.advance(601ms);
        QCOMPARE(button.steps, 44);
    }

    void repeatStopsWhenDestroyed()
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
};

QUILLMERE_TEST(KeyRepeatTest, QGuiApplication)

} // namespace quillmere

#include "KeyRepeatTest.moc"
