#pragma once

#include "RemoteControl.h"
#include "ScreenWatch.h"
#include "TelevisionSet.h"
#include "TextReader.h"

#include <QRectF>

/** Where things stand on the screens, in points of the 1920 x 1080 canvas. */
namespace area {

inline constexpr QRectF everything(0, 0, 1920, 1080);
inline constexpr QRectF leftDoor(300, 240, 640, 700);
inline constexpr QRectF rightDoor(980, 240, 640, 700);
inline constexpr QRectF statusLine(300, 942, 1320, 58);
inline constexpr QRectF notice(300, 1004, 1320, 72);

} // namespace area

/** A viewer before the set: the screen, the remote in hand, and eyes that read. One thread. */
class LivingRoom
{
public:
    /** Uses the display that DISPLAY names; throws std::runtime_error with a sentence when that is not to be. */
    LivingRoom();

    ScreenWatch& screen() { return m_screen; }
    TextReader& reader() { return m_reader; }

    /** Waits until the window of a program that was ended is gone; throws when it stays. */
    void waitForEmptyScreen();
    /**
     * Starts the real program, with these resume positions (seconds by tape id) kept from before, and gives its window
     * the input focus; throws when no window comes. What the program and its libraries complain of is appended to `log`.
     */
    void switchOn(const QString& log = QStringLiteral("/dev/stderr"), const QMap<qint64, double>& kept = {});
    /** Ends the program, as the box's shutdown would. */
    void switchOff();
    bool isOn();
    /** The running program; it must have been switched on. */
    TelevisionSet& set() { return *m_set; }

    void press(const QString& button) { m_remote.press(button); }
    /** Presses a button and answers whether the picture changed within two seconds. */
    bool pressAndSee(const QString& button);
    RemoteControl& remote() { return m_remote; }

    QString read(const QRectF& points) { return m_reader.read(m_screen.look(), points); }
    bool waitForText(const QRectF& points, const QString& text,
                     std::chrono::milliseconds limit = std::chrono::seconds(10));

private:
    std::shared_ptr<XConnection> m_connection;
    ScreenWatch m_screen;
    RemoteControl m_remote;
    TextReader m_reader;
    std::unique_ptr<TelevisionSet> m_set;
};
