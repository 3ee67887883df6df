#pragma once

#include <QProcess>
#include <QStringList>

#include <chrono>
#include <optional>

namespace quillmere {

/** A child process that ends with this object, or with the test process if that is killed. Single-threaded. */
class ChildProcess
{
public:
    /**
     * Throws std::runtime_error with a readable message if the program cannot be started. Its standard error goes to
     * `log`.
     */
    ChildProcess(const QString& program, const QStringList& arguments,
                 const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment(),
                 const QString& log = QProcess::nullDevice());
    /** Sends SIGTERM, and SIGKILL if the process still runs after five seconds. */
    ~ChildProcess();

    qint64 pid() const { return m_process.processId(); }
    bool isRunning();

    /**
     * The first line on its standard output that starts with `start`; nullopt if the process ends or `limit` passes
     * first.
     */
    std::optional<QString> waitForLine(const QString& start, std::chrono::milliseconds limit);

    /** Its exit status; nullopt if it still runs after `limit`, or has crashed. */
    std::optional<int> waitForEnd(std::chrono::milliseconds limit);

    void end();

private:
    QProcess m_process;
};

} // namespace quillmere
