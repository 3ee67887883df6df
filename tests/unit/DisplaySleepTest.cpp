#include "DisplaySleep.h"
#include "IdleInhibitor.h"
#include "RemoteInput.h"
#include "Rows.h"
#include "ScriptedClock.h"
#include "ScriptedDisplayPower.h"
#include "TestMain.h"

#include <QKeyEvent>
#include <QTest>
#include <QWindow>

#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

using std::chrono::milliseconds;

namespace {

constexpr milliseconds delay = 20min;
constexpr milliseconds timeToDraw = 500ms; // between the black window and switching the output off

/** A window with display sleep and remote input, like the program's; it records the keys that reach it. */
class SleepingWindow : public QWindow
{
public:
    SleepingWindow()
    {
        sleep.emplace(*this, clock, power, delay);
        QObject::connect(&*sleep, &DisplaySleep::asleepChanged, this, [this](bool asleep) { isAsleep = asleep; });
        new RemoteInput(this, clock);
    }

    void fallAsleep()
    {
        clock.advance(delay + timeToDraw);
        delivered.clear();
        power.calls.clear();
    }

    void send(QEvent::Type type, int key, quint64 timestamp = 0, bool isAutoRepeat = false)
    {
        QKeyEvent event(type, key, Qt::NoModifier, 0, 0, 0, QString(), isAutoRepeat);
        event.setTimestamp(timestamp);
        QCoreApplication::sendEvent(this, &event);
    }

    void press(int key) { send(QEvent::KeyPress, key); }
    void release(int key)
    {
        send(QEvent::KeyRelease, key);
        clock.advance(20ms); // a release is held back until it is certain that no repeat follows
    }

    ScriptedClock clock;
    ScriptedDisplayPower power;
    std::optional<DisplaySleep> sleep;
    bool isAsleep = false;
    QList<int> delivered; ///< keys; a release as a negative number

protected:
    void keyPressEvent(QKeyEvent* event) override { delivered.append(event->key()); }
    void keyReleaseEvent(QKeyEvent* event) override { delivered.append(-event->key()); }
};

struct AsleepWindow : SleepingWindow
{
    AsleepWindow() { fallAsleep(); }
};

} // namespace

class DisplaySleepTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blackIsShownAfterDelayWithoutKeyAndOutputGoesOffLater()
    {
        SleepingWindow window;
        window.clock.advance(delay - 1ms);
        QVERIFY(!window.isAsleep);
        window.clock.advance(1ms);
        QVERIFY(window.isAsleep);
        window.clock.advance(timeToDraw - 1ms);
        QCOMPARE(window.power.calls, QStringList());
        window.clock.advance(1ms);
        QCOMPARE(window.power.calls, QStringList{u"off"_s});
        window.clock.advance(24h);
        QCOMPARE(window.power.calls, QStringList{u"off"_s});
    }

    void keyRestartsDelay()
    {
        SleepingWindow window;
        for (int i = 0; i < 3; ++i) {
            window.clock.advance(delay - 1ms);
            window.press(Qt::Key_Back);
            window.send(QEvent::KeyRelease, Qt::Key_Back);
        }
        window.clock.advance(delay - 1ms);
        QVERIFY(!window.isAsleep);
        window.clock.advance(1ms);
        QVERIFY(window.isAsleep);
    }

    void delayBeginsWhenAllPlayingEnds()
    {
        SleepingWindow window;
        std::optional<IdleInhibitor> first(std::in_place);
        std::optional<IdleInhibitor> second(std::in_place);
        window.clock.advance(3 * delay);
        second.reset();
        window.clock.advance(3 * delay);
        QVERIFY(!window.isAsleep);
        first.reset();
        window.clock.advance(delay - 1ms);
        QVERIFY(!window.isAsleep);
        window.clock.advance(1ms);
        QVERIFY(window.isAsleep);
    }

    void displayStaysOnIfSomethingPlayedFromBeginning()
    {
        std::optional<IdleInhibitor> playing(std::in_place);
        SleepingWindow window;
        window.clock.advance(3 * delay);
        QVERIFY(!window.isAsleep);
        playing.reset();
        window.clock.advance(delay);
        QVERIFY(window.isAsleep);
    }

    void windowIsBlackUntilDisplayIsOn()
    {
        AsleepWindow window;
        window.power.isSlow = true;
        window.press(Qt::Key_Down);
        QVERIFY(window.isAsleep);
        window.power.switchOnCompletion.resolve(true);
        QVERIFY(!window.isAsleep);
    }

    void displayThatTurnsOnTooLateStaysBlack()
    {
        AsleepWindow window;
        window.power.isSlow = true;
        window.press(Qt::Key_Down);
        window.release(Qt::Key_Down);
        const Completion<bool> first = window.power.switchOnCompletion;
        window.clock.advance(delay + timeToDraw);
        first.resolve(true);
        QVERIFY(window.isAsleep);
    }

    void displayMayTurnOnAfterDisplaySleepIsDestroyed()
    {
        AsleepWindow window;
        window.power.isSlow = true;
        window.press(Qt::Key_Down);
        window.sleep.reset();
        window.power.switchOnCompletion.resolve(true);
        QVERIFY(window.isAsleep);
    }

    void keyWakesDisplayForAnotherDelayAndIsNotDelivered_data()
    {
        rows<int>({"key"}, {{"arrow", Qt::Key_Down},
                            {"select", Qt::Key_Return},
                            {"back", Qt::Key_Escape},
                            {"letter", Qt::Key_A},
                            {"unknown key", Qt::Key_unknown},
                            {"key without a name", 0}});
    }
    void keyWakesDisplayForAnotherDelayAndIsNotDelivered()
    {
        QFETCH(const int, key);
        AsleepWindow window;
        window.press(key);
        QVERIFY(!window.isAsleep);
        QCOMPARE(window.power.calls, QStringList{u"on"_s});
        window.release(key);
        QCOMPARE(window.delivered, QList<int>());
        window.clock.advance(delay + timeToDraw);
        QVERIFY(window.isAsleep);
        QCOMPARE(window.power.calls, (QStringList{u"on"_s, u"off"_s}));
    }

    void heldWakingKeyIsNotDelivered_data()
    {
        rows<int>({"key"},
                  {{"arrow, repeated by the program", Qt::Key_Down}, {"letter, repeated by the system", Qt::Key_A}});
    }
    void heldWakingKeyIsNotDelivered()
    {
        QFETCH(const int, key);
        AsleepWindow window;
        window.press(key);
        for (int i = 0; i < 20; ++i) {
            window.clock.advance(100ms);
            window.send(QEvent::KeyRelease, key, 0, true);
            window.send(QEvent::KeyPress, key, 0, true);
        }
        window.release(key);
        QCOMPARE(window.delivered, QList<int>());
    }

    void nextPressOfWakingKeyIsDeliveredButNotRepeatReportedAsPress()
    {
        AsleepWindow window;
        window.send(QEvent::KeyPress, Qt::Key_A, 1000);
        for (quint64 time = 1400; time < 2000; time += 40) {
            window.send(QEvent::KeyRelease, Qt::Key_A, time);
            window.send(QEvent::KeyPress, Qt::Key_A, time);
        }
        window.send(QEvent::KeyRelease, Qt::Key_A, 2010);
        QCOMPARE(window.delivered, QList<int>());
        window.send(QEvent::KeyPress, Qt::Key_A, 2110);
        window.send(QEvent::KeyRelease, Qt::Key_A, 2210);
        QCOMPARE(window.delivered, (QList<int>{Qt::Key_A, -Qt::Key_A}));
    }

    void otherKeyIsDeliveredWhileWakingKeyIsHeld()
    {
        AsleepWindow window;
        window.press(Qt::Key_A);
        window.press(Qt::Key_B);
        window.release(Qt::Key_B);
        window.release(Qt::Key_A);
        QCOMPARE(window.delivered, (QList<int>{Qt::Key_B, -Qt::Key_B}));
    }

    void wakingKeyIsIdentifiedByScanCode()
    {
        AsleepWindow window;
        constexpr quint32 scanCode = 24;
        QKeyEvent press(QEvent::KeyPress, Qt::Key_At, Qt::GroupSwitchModifier, scanCode, 0, 0);
        QCoreApplication::sendEvent(&window, &press);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_Q, Qt::NoModifier, scanCode, 0, 0);
        QCoreApplication::sendEvent(&window, &release);
        QCOMPARE(window.delivered, QList<int>());
    }

    void wakingKeyIsDeliveredAgainAfterWindowLostFocus_data()
    {
        rows<int>({"key"}, {{"repeating button", Qt::Key_Left},
                            {"button without repeat", Qt::Key_Select},
                            {"back", Qt::Key_Back},
                            {"no button of the remote", Qt::Key_A}});
    }
    void wakingKeyIsDeliveredAgainAfterWindowLostFocus()
    {
        QFETCH(const int, key);
        AsleepWindow window;
        window.press(key);
        // Another window gets the release.
        QFocusEvent focusOut(QEvent::FocusOut);
        QCoreApplication::sendEvent(&window, &focusOut);
        window.press(key);
        QCOMPARE(window.delivered, QList<int>{key});
    }

    void releaseOfKeyPressedBeforeSleepIsDeliveredWithoutWaking()
    {
        SleepingWindow window;
        window.press(Qt::Key_Back);
        window.fallAsleep();
        window.release(Qt::Key_Back);
        QCOMPARE(window.delivered, QList<int>{-Qt::Key_Back});
        QVERIFY(window.isAsleep);
    }

    void keyBeforeOutputIsOffCancelsSwitching()
    {
        SleepingWindow window;
        window.clock.advance(delay);
        window.press(Qt::Key_Down);
        QVERIFY(!window.isAsleep);
        window.clock.advance(delay - 1ms);
        QCOMPARE(window.power.calls, QStringList());
    }

    void playingWakesDisplayUntilDelayAfterItsEnd()
    {
        AsleepWindow window;
        std::optional<IdleInhibitor> playing(std::in_place);
        QVERIFY(!window.isAsleep);
        QCOMPARE(window.power.calls, QStringList{u"on"_s});
        window.press(Qt::Key_A);
        QCOMPARE(window.delivered, QList<int>{Qt::Key_A});
        window.clock.advance(delay);
        playing.reset();
        window.clock.advance(delay + timeToDraw);
        QVERIFY(window.isAsleep);
        QCOMPARE(window.power.calls, (QStringList{u"on"_s, u"off"_s}));
    }

    void delayIsParsed_data()
    {
        rows<std::optional<milliseconds>>({"parsed"}, {{"20min", 20min},
                                                       {"20 m", 20min},
                                                       {"20", 20min},
                                                       {"90s", 90s},
                                                       {"90 sec", 90s},
                                                       {"2h", 2h},
                                                       {" 5min ", 5min},
                                                       {"0", 0ms},
                                                       {"", std::nullopt},
                                                       {"never", std::nullopt},
                                                       {"-1", std::nullopt},
                                                       {"1.5min", std::nullopt},
                                                       {"20 hours", std::nullopt},
                                                       {"99999999", std::nullopt}});
    }
    void delayIsParsed() { QTEST(DisplaySleep::parseDelay(QString::fromLatin1(QTest::currentDataTag())), "parsed"); }
};

QUILLMERE_TEST(DisplaySleepTest, QGuiApplication)

} // namespace quillmere

#include "DisplaySleepTest.moc"
