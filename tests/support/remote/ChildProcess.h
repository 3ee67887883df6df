#pragma once

#include <QProcess>
#include <QStringList>

#include <chrono>
#include <optional>

/** A program started for a test and ended with it, even if the test itself is killed. One thread. */
class ChildProcess
{
public:
    /** Throws std::runtime_error with a sentence when it cannot be started. Its error output goes to `log`. */
    ChildProcess(const QString& program, const QStringList& arguments,
                 const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment(),
                 const QString& log = QProcess::nullDevice());
    /** Ends it by SIGTERM, and by SIGKILL when that does not help within five seconds. */
    ~ChildProcess();

    qint64 pid() const { return m_process.processId(); }
    bool isRunning();

    /** The first line on its standard output that starts with `start`; nothing when it ends or `limit` passes. */
    std::optional<QString> waitForLine(const QString& start, std::chrono::milliseconds limit);

    /** Its exit status; nothing when it still runs after `limit`, or it crashed. */
    std::optional<int> waitForEnd(std::chrono::milliseconds limit);

    void end();

private:
    QProcess m_process;
};
