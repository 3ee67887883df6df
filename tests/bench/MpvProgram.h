#pragma once

#include "ChildProcess.h"

#include <QLocalSocket>
#include <QTemporaryDir>

#include <memory>

class LivingRoom;

/**
 * The mpv program full screen, drawing by X11 in software, with its own defaults but for what would make its work another
 * than the set's: it checks the hub's certificate, and plays the sound into nothing where there is no device. One thread.
 */
class MpvProgram
{
public:
    /** Whether it is installed. */
    static bool isThere();

    /** A black window that waits for `load`; throws std::runtime_error with a sentence when it does not come. */
    static std::unique_ptr<MpvProgram> idle(LivingRoom& room);
    /** Started with what it plays. */
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
