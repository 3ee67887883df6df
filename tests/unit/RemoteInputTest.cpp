#include "RemoteInput.h"
#include "RemoteButton.h"
#include "Rows.h"
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
    void keyIsMappedToButton_data()
    {
        rows<int, quint32, RemoteButton>(
            {"key", "scanCode", "button"},
            {{"KEY_OK without a keysym", 0, 360, RemoteButton::Select},
             {"KEY_SELECT without a keysym", 0, 361, RemoteButton::Select},
             {"KEY_OK as an unknown key", Qt::Key_unknown, 360, RemoteButton::Select},
             {"select", Qt::Key_Select, 0, RemoteButton::Select},
             {"return", Qt::Key_Return, 36, RemoteButton::Select},
             {"keypad enter", Qt::Key_Enter, 104, RemoteButton::Select},
             {"escape", Qt::Key_Escape, 9, RemoteButton::Back},
             {"back", Qt::Key_Back, 166, RemoteButton::Back},
             {"KEY_EXIT as close", Qt::Key_Close, 182, RemoteButton::Back},
             {"play/pause on X11", Qt::Key_MediaPlay, 172, RemoteButton::PlayPause},
             {"play/pause without a desktop", Qt::Key_MediaTogglePlayPause, 172, RemoteButton::PlayPause},
             {"play/pause on an ordinary keyboard", Qt::Key_F5, 71, RemoteButton::PlayPause},
             {"play over CEC", Qt::Key_MediaPlay, 208, RemoteButton::Play},
             {"pause over CEC", Qt::Key_MediaPause, 209, RemoteButton::Pause},
             {"KEY_PLAYCD without a keysym", 0, 208, RemoteButton::Play},
             {"stop", Qt::Key_MediaStop, 174, RemoteButton::Stop},
             {"fast forward", Qt::Key_AudioForward, 216, RemoteButton::FastForward},
             {"rewind", Qt::Key_AudioRewind, 176, RemoteButton::Rewind},
             {"next", Qt::Key_MediaNext, 171, RemoteButton::Next},
             {"previous", Qt::Key_MediaPrevious, 173, RemoteButton::Previous},
             {"channel up", Qt::Key_ChannelUp, 0, RemoteButton::ChannelUp},
             {"KEY_CHANNELDOWN without a keysym", 0, 411, RemoteButton::ChannelDown},
             {"left", Qt::Key_Left, 113, RemoteButton::Left},
             {"menu", Qt::Key_Menu, 135, RemoteButton::Menu},
             {"info", Qt::Key_Info, 366, RemoteButton::Info},
             {"page down", Qt::Key_PageDown, 117, RemoteButton::PageDown},
             {"a letter", Qt::Key_A, 38, RemoteButton::None},
             {"a letter with a button's scan code", Qt::Key_A, 360, RemoteButton::None},
             {"space types", Qt::Key_Space, 65, RemoteButton::None},
             {"backspace deletes", Qt::Key_Backspace, 22, RemoteButton::None},
             {"no key and no scan code", 0, 0, RemoteButton::None}});
    }
    void keyIsMappedToButton()
    {
        QFETCH(int, key);
        QFETCH(quint32, scanCode);
        QTEST(remoteButton(key, scanCode), "button");
    }

    void buttonHasOneCanonicalKeyAndNoMappingIsHiddenByEarlierOne()
    {
        std::set<RemoteButton> seen;
        for (const CanonicalKey& row : canonicalKeys()) {
            QVERIFY(seen.insert(row.button).second);
            QCOMPARE(remoteButton(row.key, 0), row.button);
        }
        for (const RemoteKey& row : remoteKeys()) {
            QVERIFY(seen.contains(row.button));
            QCOMPARE(remoteButton(row.key, row.scanCode), row.button);
        }
        QCOMPARE(int(seen.size()), int(RemoteButton::PageDown));
    }

    void windowGetsOnlyCanonicalKeys()
    {
        RecordingWindow window;
        send(window, QEvent::KeyPress, Qt::Key_Return, 36);
        send(window, QEvent::KeyRelease, Qt::Key_Return, 36);
        send(window, QEvent::KeyPress, 0, 360);
        send(window, QEvent::KeyPress, Qt::Key_MediaPlay, 172);
        send(window, QEvent::KeyPress, Qt::Key_Left, 113);
        QCOMPARE(window.pressed,
                 (QList<int>{Qt::Key_Select, Qt::Key_Select, Qt::Key_MediaTogglePlayPause, Qt::Key_Left}));
        QCOMPARE(window.released, QList<int>{Qt::Key_Select});
    }

    void returnKeyKeepsTextUnlikeSelectButton()
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

    void heldBackIsPressedOnce()
    {
        RecordingWindow window;
        for (const int key : {int(Qt::Key_Back), int(Qt::Key_Return), int(Qt::Key_MediaTogglePlayPause)}) {
            window.pressed.clear();
            send(window, QEvent::KeyPress, key);
            for (int i = 0; i < 5; ++i) {
                send(window, QEvent::KeyRelease, key, 0, true);
                send(window, QEvent::KeyPress, key, 0, true);
                window.clock.advance(1s); // the program repeats no such key either
            }
            send(window, QEvent::KeyRelease, key);
            QCOMPARE(window.pressed.size(), 1);
        }
        QCOMPARE(window.released.size(), 3);
    }

    void repeatReportedAsNewPressIsIgnored()
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

    void heldArrowIsRepeatedByProgram()
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

    void systemRepeatsDoNotChangeRepeatTimes_data()
    {
        rows<bool, std::chrono::milliseconds>({"isMarked", "gap"},
                                              {{"marked as repeats", true, 0ms},
                                               {"reported as new presses", false, 0ms},
                                               {"reported as new presses, which come later", false, 2ms}});
    }
    void systemRepeatsDoNotChangeRepeatTimes()
    {
        QFETCH(const bool, isMarked);
        QFETCH(const std::chrono::milliseconds, gap);
        RecordingWindow window;
        send(window, QEvent::KeyPress, Qt::Key_Down, 116, false, 1000);
        for (quint64 time = 1025; time <= 2000; time += 25) {
            window.clock.advance(25ms - gap);
            send(window, QEvent::KeyRelease, Qt::Key_Down, 116, isMarked, time);
            window.clock.advance(gap);
            send(window, QEvent::KeyPress, Qt::Key_Down, 116, isMarked, time);
        }
        QCOMPARE(window.repeats, 5);
        QCOMPARE(window.pressed.size(), 6);
        QCOMPARE(window.released.size(), 0);
        send(window, QEvent::KeyRelease, Qt::Key_Down, 116, false, 2025);
        window.clock.advance(10s);
        QCOMPARE(window.pressed.size(), 6);
        QCOMPARE(window.released.size(), 1);
    }

    void quickPressesAreAllDelivered()
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

    void repeatEndsWithRelease()
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

    void repeatEndsWithAnotherButton_data()
    {
        rows<int, bool>({"other", "repeats"},
                        {{"that repeats", Qt::Key_Right, true}, {"that acts once", Qt::Key_Select, false}});
    }
    void repeatEndsWithAnotherButton()
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

    void releaseOfAnotherButtonDoesNotEndRepeat()
    {
        RecordingWindow window;
        send(window, QEvent::KeyPress, Qt::Key_Down);
        send(window, QEvent::KeyPress, Qt::Key_Right);
        send(window, QEvent::KeyRelease, Qt::Key_Down);
        window.clock.advance(400ms);
        QCOMPARE(window.repeats, 1);
    }

    void repeatEndsWhenWindowLosesFocus()
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

    void repeatIsDeliveredAsCanonicalKey()
    {
        RecordingWindow window;
        send(window, QEvent::KeyPress, 0, 216);
        window.clock.advance(400ms);
        QCOMPARE(window.pressed, (QList<int>{Qt::Key_AudioForward, Qt::Key_AudioForward}));
    }

    void otherKeysAreUnchanged()
    {
        RecordingWindow window;
        send(window, QEvent::KeyPress, Qt::Key_A, 38);
        send(window, QEvent::KeyPress, Qt::Key_A, 38, true);
        QCOMPARE(window.pressed, (QList<int>{Qt::Key_A, Qt::Key_A}));
    }
};

QUILLMERE_TEST(RemoteInputTest, QGuiApplication)

} // namespace quillmere

#include "RemoteInputTest.moc"
