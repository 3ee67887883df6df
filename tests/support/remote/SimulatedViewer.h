#pragma once

#include "ProgramProcess.h"
#include "RemoteControl.h"
#include "ScreenWatch.h"
#include "TextReader.h"

#include <QRectF>

namespace quillmere {

/** Areas of the screens, in points of the 1920 x 1080 canvas. */
namespace area {

inline constexpr QRectF everything(0, 0, 1920, 1080);
inline constexpr QRectF leftDoor(300, 240, 640, 700);
inline constexpr QRectF rightDoor(980, 240, 640, 700);
inline constexpr QRectF statusLine(300, 942, 1320, 58);
inline constexpr QRectF notice(300, 1004, 1320, 72);

} // namespace area

/**
 * Simulates a viewer: starts the program, presses buttons of the remote, and reads the text on the screen.
 * Single-threaded.
 */
class SimulatedViewer
{
public:
    /** Uses the display that DISPLAY names. Throws std::runtime_error with a readable message if that fails. */
    SimulatedViewer();

    ScreenWatch& screen() { return m_screen; }
    TextReader& reader() { return m_reader; }

    /** Waits until the window of an ended program has closed; throws if it stays open. */
    void waitForEmptyScreen();
    /**
     * Starts the real program and gives its window the input focus; throws if no window appears. The program finds
     * `resumePositions` (seconds by tape id) in its resume file. Messages of the program and its libraries are appended
     * to `log`.
     */
    void switchOn(const QString& log = QStringLiteral("/dev/stderr"), const QMap<qint64, double>& resumePositions = {});
    /** Ends the program by SIGTERM, as a shutdown of the machine does. */
    void switchOff();
    bool isOn();
    /** The running program. Valid only after `switchOn`. */
    ProgramProcess& program() { return *m_program; }

    void press(const QString& button) { m_remote.press(button); }
    /** Presses a button; returns whether the picture changed within two seconds. */
    bool pressAndWaitForChange(const QString& button);
    RemoteControl& remote() { return m_remote; }

    QString read(const QRectF& points) { return m_reader.read(m_screen.grab(), points); }
    bool waitForText(const QRectF& points, const QString& text,
                     std::chrono::milliseconds limit = std::chrono::seconds(10));

private:
    std::shared_ptr<XConnection> m_connection;
    ScreenWatch m_screen;
    RemoteControl m_remote;
    TextReader m_reader;
    std::unique_ptr<ProgramProcess> m_program;
};

} // namespace quillmere
