#include "RemoteInput.h"
#include "RemoteButton.h"
#include "ScriptedClock.h"
#include "TestMain.h"

#include <QKeyEvent>
#include <QTest>
#include <QWindow>

#include <set>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

/** A window with remote input on a scripted clock; it records the keys that reach it. */
class RecordingWindow : public QWindow
{
public:
    RecordingWindow() { new RemoteInput(this, clock); }

    ScriptedClock clock;
    QList<int> pressed;
    QList<int> released;
    QString text;    ///< of all presses
    int repeats = 0; ///< number of presses that are repeats

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        pressed.append(event->key());
        text += event->text();
        repeats += event->isAutoRepeat();
    }
    void keyReleaseEvent(QKeyEvent* event) override { released.append(event->key()); }
};

void send(QWindow& window, QEvent::Type type, int key, quint32 scanCode = 0, bool autoRepeat = false,
          quint64 timestamp = 0)
{
    QKeyEvent event(type, key, Qt::NoModifier, scanCode, 0, 0, QString(), autoRepeat);
    event.setTimestamp(timestamp);
    QCoreApplication::sendEvent(&window, &event);
}

} // namespace

class RemoteInputTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keyIsMappedToButton_data();
    void keyIsMappedToButton();
    void buttonHasOneCanonicalKeyThatMapsBack();
    void mappingIsNotHiddenByEarlierOne();
    void windowGetsOnlyCanonicalKeys();
    void returnKeyKeepsTextUnlikeSelectButton();
    void heldBackIsPressedOnce();
    void repeatReportedAsNewPressIsIgnored();
    void heldArrowIsRepeatedByProgram();
    void systemRepeatsAreIgnored();
    void repeatReportedAsNewPressDoesNotChangeRepeatTimes();
    void repeatWithDelayedPressContinues();
    void quickPressesAreAllDelivered();
    void repeatEndsWithRelease();
    void repeatEndsWithAnotherButton_data();
    void repeatEndsWithAnotherButton();
    void releaseOfAnotherButtonDoesNotEndRepeat();
    void repeatEndsWhenWindowLosesFocus();
    void repeatIsDeliveredAsCanonicalKey();
    void otherKeysAreUnchanged();
};

void RemoteInputTest::keyIsMappedToButton_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<quint32>("scanCode");
    QTest::addColumn<RemoteButton>("button");

    QTest::newRow("KEY_OK without a keysym") << 0 << 360u << RemoteButton::Select;
    QTest::newRow("KEY_SELECT without a keysym") << 0 << 361u << RemoteButton::Select;
    QTest::newRow("KEY_OK as an unknown key") << int(Qt::Key_unknown) << 360u << RemoteButton::Select;
    QTest::newRow("select") << int(Qt::Key_Select) << 0u << RemoteButton::Select;
    QTest::newRow("return") << int(Qt::Key_Return) << 36u << RemoteButton::Select;
    QTest::newRow("keypad enter") << int(Qt::Key_Enter) << 104u << RemoteButton::Select;
    QTest::newRow("escape") << int(Qt::Key_Escape) << 9u << RemoteButton::Back;
    QTest::newRow("back") << int(Qt::Key_Back) << 166u << RemoteButton::Back;
    QTest::newRow("KEY_EXIT as close") << int(Qt::Key_Close) << 182u << RemoteButton::Back;
    QTest::newRow("play/pause on X11") << int(Qt::Key_MediaPlay) << 172u << RemoteButton::PlayPause;
    QTest::newRow("play/pause without a desktop")
        << int(Qt::Key_MediaTogglePlayPause) << 172u << RemoteButton::PlayPause;
    QTest::newRow("play/pause on an ordinary keyboard") << int(Qt::Key_F5) << 71u << RemoteButton::PlayPause;
    QTest::newRow("play over CEC") << int(Qt::Key_MediaPlay) << 208u << RemoteButton::Play;
    QTest::newRow("pause over CEC") << int(Qt::Key_MediaPause) << 209u << RemoteButton::Pause;
    QTest::newRow("KEY_PLAYCD without a keysym") << 0 << 208u << RemoteButton::Play;
    QTest::newRow("stop") << int(Qt::Key_MediaStop) << 174u << RemoteButton::Stop;
    QTest::newRow("fast forward") << int(Qt::Key_AudioForward) << 216u << RemoteButton::FastForward;
    QTest::newRow("rewind") << int(Qt::Key_AudioRewind) << 176u << RemoteButton::Rewind;
    QTest::newRow("next") << int(Qt::Key_MediaNext) << 171u << RemoteButton::Next;
    QTest::newRow("previous") << int(Qt::Key_MediaPrevious) << 173u << RemoteButton::Previous;
    QTest::newRow("channel up") << int(Qt::Key_ChannelUp) << 0u << RemoteButton::ChannelUp;
    QTest::newRow("KEY_CHANNELDOWN without a keysym") << 0 << 411u << RemoteButton::ChannelDown;
    QTest::newRow("left") << int(Qt::Key_Left) << 113u << RemoteButton::Left;
    QTest::newRow("menu") << int(Qt::Key_Menu) << 135u << RemoteButton::Menu;
    QTest::newRow("info") << int(Qt::Key_Info) << 366u << RemoteButton::Info;
    QTest::newRow("page down") << int(Qt::Key_PageDown) << 117u << RemoteButton::PageDown;
    QTest::newRow("a letter") << int(Qt::Key_A) << 38u << RemoteButton::None;
    QTest::newRow("a letter with a button's scan code") << int(Qt::Key_A) << 360u << RemoteButton::None;
    QTest::newRow("space types") << int(Qt::Key_Space) << 65u << RemoteButton::None;
    QTest::newRow("backspace deletes") << int(Qt::Key_Backspace) << 22u << RemoteButton::None;
    QTest::newRow("no key and no scan code") << 0 << 0u << RemoteButton::None;
}

void RemoteInputTest::keyIsMappedToButton()
{
    QFETCH(int, key);
    QFETCH(quint32, scanCode);
    QTEST(remoteButton(key, scanCode), "button");
}

void RemoteInputTest::buttonHasOneCanonicalKeyThatMapsBack()
{
    std::set<RemoteButton> seen;
    for (const CanonicalKey& row : canonicalKeys()) {
        QVERIFY(seen.insert(row.button).second);
        QCOMPARE(remoteButton(row.key, 0), row.button);
    }
    for (const RemoteKey& row : remoteKeys())
        QVERIFY(seen.contains(row.button));
    QCOMPARE(int(seen.size()), int(RemoteButton::PageDown));
}

void RemoteInputTest::mappingIsNotHiddenByEarlierOne()
{
    for (const RemoteKey& row : remoteKeys())
        QCOMPARE(remoteButton(row.key, row.scanCode), row.button);
}

void RemoteInputTest::windowGetsOnlyCanonicalKeys()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_Return, 36);
    send(window, QEvent::KeyRelease, Qt::Key_Return, 36);
    send(window, QEvent::KeyPress, 0, 360);
    send(window, QEvent::KeyPress, Qt::Key_MediaPlay, 172);
    send(window, QEvent::KeyPress, Qt::Key_Left, 113);
    QCOMPARE(window.pressed, (QList<int>{Qt::Key_Select, Qt::Key_Select, Qt::Key_MediaTogglePlayPause, Qt::Key_Left}));
    QCOMPARE(window.released, QList<int>{Qt::Key_Select});
}

void RemoteInputTest::returnKeyKeepsTextUnlikeSelectButton()
{
    RecordingWindow window;
    QKeyEvent select(QEvent::KeyPress, Qt::Key_Select, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &select);
    QCOMPARE(window.text, QString());
    QKeyEvent returned(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s);
    QCoreApplication::sendEvent(&window, &returned);
    QCOMPARE(window.text, u"\r"_s);
    QCOMPARE(window.pressed, (QList<int>{Qt::Key_Select, Qt::Key_Select}));
}

void RemoteInputTest::heldBackIsPressedOnce()
{
    RecordingWindow window;
    for (const int key : {int(Qt::Key_Back), int(Qt::Key_Return), int(Qt::Key_MediaTogglePlayPause)}) {
        window.pressed.clear();
        send(window, QEvent::KeyPress, key);
        for (int i = 0; i < 5; ++i) {
            send(window, QEvent::KeyRelease, key, 0, true);
            send(window, QEvent::KeyPress, key, 0, true);
        }
        send(window, QEvent::KeyRelease, key);
        QCOMPARE(window.pressed.size(), 1);
    }
    QCOMPARE(window.released.size(), 3);
}

void RemoteInputTest::repeatReportedAsNewPressIsIgnored()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_Return, 36, false, 1000);
    for (const quint64 time : {1660, 1700, 1740}) {
        send(window, QEvent::KeyRelease, Qt::Key_Return, 36, false, time);
        send(window, QEvent::KeyPress, Qt::Key_Return, 36, false, time);
    }
    send(window, QEvent::KeyRelease, Qt::Key_Return, 36, false, 1750);
    QCOMPARE(window.pressed.size(), 1);
    QCOMPARE(window.clock.pendingTimers(), 0);
    send(window, QEvent::KeyPress, Qt::Key_Return, 36, false, 1850);
    QCOMPARE(window.pressed.size(), 2);
    send(window, QEvent::KeyRelease, Qt::Key_Return, 36, false, 1900);
    send(window, QEvent::KeyPress, Qt::Key_Left, 113, false, 1900);
    QCOMPARE(window.pressed.size(), 3);
}

void RemoteInputTest::heldArrowIsRepeatedByProgram()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_Down);
    QCOMPARE(window.pressed.size(), 1);
    QCOMPARE(window.repeats, 0);
    window.clock.advance(399ms);
    QCOMPARE(window.repeats, 0);
    window.clock.advance(1ms);
    QCOMPARE(window.repeats, 1);
    window.clock.advance(600ms);
    QCOMPARE(window.repeats, 5);
    QCOMPARE(window.pressed, QList<int>(6, Qt::Key_Down));
}

void RemoteInputTest::systemRepeatsAreIgnored()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_Down);
    for (int i = 0; i < 40; ++i) {
        send(window, QEvent::KeyRelease, Qt::Key_Down, 0, true);
        send(window, QEvent::KeyPress, Qt::Key_Down, 0, true);
        window.clock.advance(25ms);
    }
    QCOMPARE(window.pressed.size(), 6);
    QCOMPARE(window.released.size(), 0);
}

void RemoteInputTest::repeatReportedAsNewPressDoesNotChangeRepeatTimes()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_Down, 116, false, 1000);
    for (quint64 time = 1025; time <= 2000; time += 25) {
        window.clock.advance(25ms);
        send(window, QEvent::KeyRelease, Qt::Key_Down, 116, false, time);
        send(window, QEvent::KeyPress, Qt::Key_Down, 116, false, time);
    }
    QCOMPARE(window.repeats, 5);
    QCOMPARE(window.pressed.size(), 6);
    QCOMPARE(window.released.size(), 0);
    send(window, QEvent::KeyRelease, Qt::Key_Down, 116, false, 2025);
    window.clock.advance(10s);
    QCOMPARE(window.pressed.size(), 6);
    QCOMPARE(window.released.size(), 1);
}

void RemoteInputTest::repeatWithDelayedPressContinues()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_Down, 116, false, 1000);
    for (quint64 time = 1040; time <= 2000; time += 40) {
        window.clock.advance(38ms);
        send(window, QEvent::KeyRelease, Qt::Key_Down, 116, false, time);
        window.clock.advance(2ms);
        send(window, QEvent::KeyPress, Qt::Key_Down, 116, false, time);
    }
    QCOMPARE(window.repeats, 5);
    send(window, QEvent::KeyRelease, Qt::Key_Down, 116, false, 2030);
    window.clock.advance(10s);
    QCOMPARE(window.repeats, 5);
}

void RemoteInputTest::quickPressesAreAllDelivered()
{
    RecordingWindow window;
    for (const quint64 time : {1000, 1002, 1004, 1006}) {
        send(window, QEvent::KeyPress, Qt::Key_Right, 114, false, time);
        send(window, QEvent::KeyRelease, Qt::Key_Right, 114, false, time + 1);
    }
    QCOMPARE(window.pressed.size(), 4);
    window.clock.advance(10s);
    QCOMPARE(window.repeats, 0);
    QCOMPARE(window.released.size(), 4);
}

void RemoteInputTest::repeatEndsWithRelease()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_Down, 0, false, 1000);
    window.clock.advance(500ms);
    send(window, QEvent::KeyRelease, Qt::Key_Down, 0, false, 1500);
    window.clock.advance(10s);
    QCOMPARE(window.repeats, 1);
    QCOMPARE(window.released.size(), 1);
    send(window, QEvent::KeyPress, Qt::Key_Down, 0, false, 11500);
    window.clock.advance(399ms);
    QCOMPARE(window.repeats, 1);
}

void RemoteInputTest::repeatEndsWithAnotherButton_data()
{
    QTest::addColumn<int>("other");
    QTest::addColumn<bool>("repeats");
    QTest::newRow("that repeats") << int(Qt::Key_Right) << true;
    QTest::newRow("that acts once") << int(Qt::Key_Select) << false;
}

void RemoteInputTest::repeatEndsWithAnotherButton()
{
    QFETCH(int, other);
    QFETCH(bool, repeats);
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_Down);
    window.clock.advance(1s);
    send(window, QEvent::KeyPress, other);
    window.pressed.clear();
    window.clock.advance(399ms);
    QCOMPARE(window.pressed, QList<int>());
    window.clock.advance(1ms);
    QCOMPARE(window.pressed, repeats ? QList<int>{other} : QList<int>());
}

void RemoteInputTest::releaseOfAnotherButtonDoesNotEndRepeat()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_Down);
    send(window, QEvent::KeyPress, Qt::Key_Right);
    send(window, QEvent::KeyRelease, Qt::Key_Down);
    window.clock.advance(400ms);
    QCOMPARE(window.repeats, 1);
}

void RemoteInputTest::repeatEndsWhenWindowLosesFocus()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_Down);
    window.clock.advance(500ms);
    QFocusEvent lost(QEvent::FocusOut);
    QCoreApplication::sendEvent(&window, &lost);
    window.clock.advance(10s);
    // The focus may return while the key is still pressed.
    send(window, QEvent::KeyPress, Qt::Key_Down, 0, true);
    send(window, QEvent::KeyRelease, Qt::Key_Down, 0, false, 20500);
    send(window, QEvent::KeyPress, Qt::Key_Down, 0, false, 20500);
    window.clock.advance(10s);
    QCOMPARE(window.repeats, 1);
}

void RemoteInputTest::repeatIsDeliveredAsCanonicalKey()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, 0, 216);
    window.clock.advance(400ms);
    QCOMPARE(window.pressed, (QList<int>{Qt::Key_AudioForward, Qt::Key_AudioForward}));
}

void RemoteInputTest::otherKeysAreUnchanged()
{
    RecordingWindow window;
    send(window, QEvent::KeyPress, Qt::Key_A, 38);
    send(window, QEvent::KeyPress, Qt::Key_A, 38, true);
    QCOMPARE(window.pressed, (QList<int>{Qt::Key_A, Qt::Key_A}));
}

QUILLMERE_TEST(RemoteInputTest, QGuiApplication)

} // namespace quillmere

#include "RemoteInputTest.moc"
