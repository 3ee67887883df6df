#pragma once

#include "ChildProcess.h"

#include <QMap>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace quillmere {

/**
 * Runs the real program as a viewer does, in a temporary home folder and with no settings except the display.
 * Single-threaded.
 */
class ProgramProcess
{
public:
    /**
     * Starts the program on the display that DISPLAY names. It finds `resumePositions` (seconds by tape id) in its
     * resume file. Messages of the program and its libraries are appended to `log`.
     */
    explicit ProgramProcess(const QString& log = QStringLiteral("/dev/stderr"),
                            const QMap<qint64, double>& resumePositions = {});

    ChildProcess& process() { return *m_process; }

    /** The saved resume position of a tape, in seconds; nullopt if there is none. */
    std::optional<double> savedPosition(qint64 tape) const;

    /** All files in its home folder, as relative paths. */
    QStringList writtenFiles() const;

private:
    QProcessEnvironment environment() const;
    QString resumeFile() const;
    void writeResumeFile(const QMap<qint64, double>& positions) const;

    QTemporaryDir m_home;
    std::unique_ptr<ChildProcess> m_process;
};

} // namespace quillmere
