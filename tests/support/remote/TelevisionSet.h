#pragma once

#include "ChildProcess.h"

#include <QMap>
#include <QTemporaryDir>

#include <memory>
#include <optional>

/** The real program, run as a viewer's: in a home of its own, with nothing told it but the display. One thread. */
class TelevisionSet
{
public:
    /**
     * Starts it on the display that DISPLAY names, with these resume positions (seconds by tape id) kept from before;
     * what it and its libraries complain of is appended to `log`.
     */
    explicit TelevisionSet(const QString& log = QStringLiteral("/dev/stderr"), const QMap<qint64, double>& kept = {});

    ChildProcess& process() { return *m_process; }

    /** The resume position, in seconds, that is kept of a tape now; nothing when there is none. */
    std::optional<double> keptPosition(qint64 tape) const;

    /** Every file that it has left in its home, as paths below it. */
    QStringList writtenFiles() const;

private:
    QProcessEnvironment environment() const;
    QString resumeFile() const;
    void keep(const QMap<qint64, double>& positions) const;

    QTemporaryDir m_home;
    std::unique_ptr<ChildProcess> m_process;
};
