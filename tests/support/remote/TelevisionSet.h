#pragma once

#include "ChildProcess.h"

#include <QTemporaryDir>

/** The real program, run as a viewer's: in a home of its own, with nothing told it but the display. One thread. */
class TelevisionSet
{
public:
    /** Starts it on the display that DISPLAY names; what it and its libraries complain of is appended to `log`. */
    explicit TelevisionSet(const QString& log = QStringLiteral("/dev/stderr"));

    ChildProcess& process() { return m_process; }

    /** Every file that it has left in its home, as paths below it. */
    QStringList writtenFiles() const;

private:
    QProcessEnvironment environment() const;

    QTemporaryDir m_home;
    ChildProcess m_process;
};
