#pragma once

#include "ChildProcess.h"

#include <QLocalSocket>
#include <QTemporaryDir>

#include <memory>

namespace quillmere {

class SimulatedViewer;

/**
 * Runs the mpv program full screen, with software rendering on X11. It uses its default settings, except that it
 * verifies the hub's certificate and uses a null sound device if there is no real one, as our program does.
 * Single-threaded.
 */
class MpvProgram
{
public:
    /** Whether the mpv program is installed. */
    static bool isInstalled();

    /**
     * Starts it with a black window and waits until it accepts `load`; throws std::runtime_error with a readable
     * message if it does not.
     */
    static std::unique_ptr<MpvProgram> idle(SimulatedViewer& viewer);
    /** Starts it with a URL to play. */
    static std::unique_ptr<MpvProgram> playing(const QString& url);

    qint64 pid() const { return m_process->pid(); }

    void load(const QString& url) { send({QStringLiteral("loadfile"), url}); }
    void stop() { send({QStringLiteral("stop")}); }

private:
    explicit MpvProgram(const QStringList& arguments);

    void send(const QStringList& command);

    QTemporaryDir m_folder;
    std::unique_ptr<ChildProcess> m_process;
    QLocalSocket m_control;
};

} // namespace quillmere
