#include "DisplaySleep.h"
#include "IdleInhibitor.h"
#include "RemoteInput.h"
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
    QStringList delivered;

protected:
    void keyPressEvent(QKeyEvent* event) override { delivered.append(u"press %1"_s.arg(event->key(), 0, 16)); }
    void keyReleaseEvent(QKeyEvent* event) override { delivered.append(u"release %1"_s.arg(event->key(), 0, 16)); }
};

QString pressOf(int key)
{
    return u"press %1"_s.arg(key, 0, 16);
}

QString releaseOf(int key)
{
    return u"release %1"_s.arg(key, 0, 16);
}

} // namespace

class DisplaySleepTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void displaySleepsAfterDelayWithoutKey();
    void blackIsShownBeforeOutputGoesOff();
    void keyRestartsDelay();
    void keysAreDeliveredWhileAwake();
    void displayStaysOnWhileSomethingPlays();
    void delayBeginsWhenPlayingEnds();
    void displayStaysOnIfSomethingPlayedFromBeginning();
    void keyWakesDisplay();
    void windowIsBlackUntilDisplayIsOn();
    void displayThatTurnsOnTooLateStaysBlack();
    void displayMayTurnOnAfterDisplaySleepIsDestroyed();
    void wakingKeyIsNotDelivered_data();
    void wakingKeyIsNotDelivered();
    void heldWakingKeyIsNotDelivered_data();
    void heldWakingKeyIsNotDelivered();
    void repeatOfWakingKeyReportedAsNewPressIsNotDelivered();
    void nextPressOfWakingKeyIsDelivered();
    void otherKeyIsDeliveredWhileWakingKeyIsHeld();
    void wakingKeyIsIdentifiedByScanCode();
    void wakingKeyIsDeliveredAgainAfterWindowLostFocus_data();
    void wakingKeyIsDeliveredAgainAfterWindowLostFocus();
    void releaseOfKeyPressedBeforeSleepIsDeliveredWithoutWaking();
    void keyBeforeOutputIsOffCancelsSwitching();
    void playingWakesDisplay();
    void displaySleepsAgainAfterKey();
    void displaySleepsAgainAfterPlaying();
    void delayIsParsed_data();
    void delayIsParsed();
};

void DisplaySleepTest::displaySleepsAfterDelayWithoutKey()
{
    SleepingWindow window;
    window.clock.advance(delay - 1ms);
    QVERIFY(!window.isAsleep);
    window.clock.advance(1ms);
    QVERIFY(window.isAsleep);
    window.clock.advance(24h);
    QCOMPARE(window.power.calls, QStringList{u"off"_s});
}

void DisplaySleepTest::blackIsShownBeforeOutputGoesOff()
{
    SleepingWindow window;
    window.clock.advance(delay + timeToDraw - 1ms);
    QVERIFY(window.isAsleep);
    QCOMPARE(window.power.calls, QStringList());
    window.clock.advance(1ms);
    QCOMPARE(window.power.calls, QStringList{u"off"_s});
}

void DisplaySleepTest::keyRestartsDelay()
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

void DisplaySleepTest::keysAreDeliveredWhileAwake()
{
    SleepingWindow window;
    window.press(Qt::Key_A);
    window.release(Qt::Key_A);
    QCOMPARE(window.delivered, (QStringList{pressOf(Qt::Key_A), releaseOf(Qt::Key_A)}));
}

void DisplaySleepTest::displayStaysOnWhileSomethingPlays()
{
    SleepingWindow window;
    const IdleInhibitor first;
    std::optional<IdleInhibitor> second(std::in_place);
    window.clock.advance(3 * delay);
    second.reset();
    window.clock.advance(3 * delay);
    QVERIFY(!window.isAsleep);
}

void DisplaySleepTest::delayBeginsWhenPlayingEnds()
{
    SleepingWindow window;
    std::optional<IdleInhibitor> playing(std::in_place);
    window.clock.advance(3 * delay);
    playing.reset();
    window.clock.advance(delay - 1ms);
    QVERIFY(!window.isAsleep);
    window.clock.advance(1ms);
    QVERIFY(window.isAsleep);
}

void DisplaySleepTest::displayStaysOnIfSomethingPlayedFromBeginning()
{
    std::optional<IdleInhibitor> playing(std::in_place);
    SleepingWindow window;
    window.clock.advance(3 * delay);
    QVERIFY(!window.isAsleep);
    playing.reset();
    window.clock.advance(delay);
    QVERIFY(window.isAsleep);
}

void DisplaySleepTest::keyWakesDisplay()
{
    SleepingWindow window;
    window.fallAsleep();
    window.press(Qt::Key_Down);
    QVERIFY(!window.isAsleep);
    QCOMPARE(window.power.calls, QStringList{u"on"_s});
}

void DisplaySleepTest::windowIsBlackUntilDisplayIsOn()
{
    SleepingWindow window;
    window.power.isSlow = true;
    window.fallAsleep();
    window.press(Qt::Key_Down);
    QVERIFY(window.isAsleep);
    window.power.switchOnCompletion.resolve(true);
    QVERIFY(!window.isAsleep);
}

void DisplaySleepTest::displayThatTurnsOnTooLateStaysBlack()
{
    SleepingWindow window;
    window.power.isSlow = true;
    window.fallAsleep();
    window.press(Qt::Key_Down);
    window.release(Qt::Key_Down);
    const Completion<bool> first = window.power.switchOnCompletion;
    window.clock.advance(delay + timeToDraw);
    first.resolve(true);
    QVERIFY(window.isAsleep);
}

void DisplaySleepTest::displayMayTurnOnAfterDisplaySleepIsDestroyed()
{
    SleepingWindow window;
    window.power.isSlow = true;
    window.fallAsleep();
    window.press(Qt::Key_Down);
    window.sleep.reset();
    window.power.switchOnCompletion.resolve(true);
    QVERIFY(window.isAsleep);
}

void DisplaySleepTest::wakingKeyIsNotDelivered_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("arrow") << int(Qt::Key_Down);
    QTest::newRow("select") << int(Qt::Key_Return);
    QTest::newRow("back") << int(Qt::Key_Escape);
    QTest::newRow("letter") << int(Qt::Key_A);
    QTest::newRow("unknown key") << int(Qt::Key_unknown);
    QTest::newRow("key without a name") << 0;
}

void DisplaySleepTest::wakingKeyIsNotDelivered()
{
    QFETCH(const int, key);
    SleepingWindow window;
    window.fallAsleep();
    window.press(key);
    window.release(key);
    QCOMPARE(window.delivered, QStringList());
}

void DisplaySleepTest::heldWakingKeyIsNotDelivered_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("arrow, repeated by the program") << int(Qt::Key_Down);
    QTest::newRow("letter, repeated by the system") << int(Qt::Key_A);
}

void DisplaySleepTest::heldWakingKeyIsNotDelivered()
{
    QFETCH(const int, key);
    SleepingWindow window;
    window.fallAsleep();
    window.press(key);
    for (int i = 0; i < 20; ++i) {
        window.clock.advance(100ms);
        window.send(QEvent::KeyRelease, key, 0, true);
        window.send(QEvent::KeyPress, key, 0, true);
    }
    window.release(key);
    QCOMPARE(window.delivered, QStringList());
}

void DisplaySleepTest::repeatOfWakingKeyReportedAsNewPressIsNotDelivered()
{
    SleepingWindow window;
    window.fallAsleep();
    window.send(QEvent::KeyPress, Qt::Key_A, 1000);
    for (quint64 time = 1400; time < 2000; time += 40) {
        window.send(QEvent::KeyRelease, Qt::Key_A, time);
        window.send(QEvent::KeyPress, Qt::Key_A, time);
    }
    window.send(QEvent::KeyRelease, Qt::Key_A, 2010);
    QCOMPARE(window.delivered, QStringList());
}

void DisplaySleepTest::nextPressOfWakingKeyIsDelivered()
{
    SleepingWindow window;
    window.fallAsleep();
    window.send(QEvent::KeyPress, Qt::Key_A, 1000);
    window.send(QEvent::KeyRelease, Qt::Key_A, 1100);
    window.send(QEvent::KeyPress, Qt::Key_A, 1200);
    window.send(QEvent::KeyRelease, Qt::Key_A, 1300);
    QCOMPARE(window.delivered, (QStringList{pressOf(Qt::Key_A), releaseOf(Qt::Key_A)}));
}

void DisplaySleepTest::otherKeyIsDeliveredWhileWakingKeyIsHeld()
{
    SleepingWindow window;
    window.fallAsleep();
    window.press(Qt::Key_A);
    window.press(Qt::Key_B);
    window.release(Qt::Key_B);
    window.release(Qt::Key_A);
    QCOMPARE(window.delivered, (QStringList{pressOf(Qt::Key_B), releaseOf(Qt::Key_B)}));
}

void DisplaySleepTest::wakingKeyIsIdentifiedByScanCode()
{
    SleepingWindow window;
    window.fallAsleep();
    constexpr quint32 scanCode = 24;
    QKeyEvent press(QEvent::KeyPress, Qt::Key_At, Qt::GroupSwitchModifier, scanCode, 0, 0);
    QCoreApplication::sendEvent(&window, &press);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Q, Qt::NoModifier, scanCode, 0, 0);
    QCoreApplication::sendEvent(&window, &release);
    QCOMPARE(window.delivered, QStringList());
}

void DisplaySleepTest::wakingKeyIsDeliveredAgainAfterWindowLostFocus_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("repeating button") << int(Qt::Key_Left);
    QTest::newRow("button without repeat") << int(Qt::Key_Select);
    QTest::newRow("back") << int(Qt::Key_Back);
    QTest::newRow("no button of the remote") << int(Qt::Key_A);
}

void DisplaySleepTest::wakingKeyIsDeliveredAgainAfterWindowLostFocus()
{
    QFETCH(const int, key);
    SleepingWindow window;
    window.fallAsleep();
    window.press(key);
    // Another window gets the release.
    QFocusEvent focusOut(QEvent::FocusOut);
    QCoreApplication::sendEvent(&window, &focusOut);
    window.press(key);
    QCOMPARE(window.delivered, QStringList{pressOf(key)});
}

void DisplaySleepTest::releaseOfKeyPressedBeforeSleepIsDeliveredWithoutWaking()
{
    SleepingWindow window;
    window.press(Qt::Key_Back);
    window.fallAsleep();
    window.release(Qt::Key_Back);
    QCOMPARE(window.delivered, QStringList{releaseOf(Qt::Key_Back)});
    QVERIFY(window.isAsleep);
}

void DisplaySleepTest::keyBeforeOutputIsOffCancelsSwitching()
{
    SleepingWindow window;
    window.clock.advance(delay);
    window.press(Qt::Key_Down);
    QVERIFY(!window.isAsleep);
    window.clock.advance(delay - 1ms);
    QCOMPARE(window.power.calls, QStringList());
}

void DisplaySleepTest::playingWakesDisplay()
{
    SleepingWindow window;
    window.fallAsleep();
    const IdleInhibitor playing;
    QVERIFY(!window.isAsleep);
    QCOMPARE(window.power.calls, QStringList{u"on"_s});
    window.press(Qt::Key_A);
    QCOMPARE(window.delivered, QStringList{pressOf(Qt::Key_A)});
}

void DisplaySleepTest::displaySleepsAgainAfterKey()
{
    SleepingWindow window;
    window.fallAsleep();
    window.press(Qt::Key_Down);
    window.release(Qt::Key_Down);
    window.clock.advance(delay + timeToDraw);
    QVERIFY(window.isAsleep);
    QCOMPARE(window.power.calls, (QStringList{u"on"_s, u"off"_s}));
}

void DisplaySleepTest::displaySleepsAgainAfterPlaying()
{
    SleepingWindow window;
    window.fallAsleep();
    std::optional<IdleInhibitor> playing(std::in_place);
    window.clock.advance(delay);
    playing.reset();
    window.clock.advance(delay + timeToDraw);
    QVERIFY(window.isAsleep);
    QCOMPARE(window.power.calls, (QStringList{u"on"_s, u"off"_s}));
}

void DisplaySleepTest::delayIsParsed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::optional<milliseconds>>("parsed");

    const auto row = [](const char* text, std::optional<milliseconds> parsed) {
        QTest::newRow(text) << QString::fromLatin1(text) << parsed;
    };
    row("20min", 20min);
    row("20 m", 20min);
    row("20", 20min);
    row("90s", 90s);
    row("90 sec", 90s);
    row("2h", 2h);
    row(" 5min ", 5min);
    row("0", 0ms);
    row("", std::nullopt);
    row("never", std::nullopt);
    row("-1", std::nullopt);
    row("1.5min", std::nullopt);
    row("20 hours", std::nullopt);
    row("99999999", std::nullopt);
}

void DisplaySleepTest::delayIsParsed()
{
    QFETCH(const QString, text);
    QFETCH(const std::optional<milliseconds>, parsed);
    QCOMPARE(DisplaySleep::parseDelay(text), parsed);
}

QUILLMERE_TEST(DisplaySleepTest, QGuiApplication)

} // namespace quillmere

#include "DisplaySleepTest.moc"
