#pragma once

#include <QString>
#include <QStringList>

/** Statistics of a running process from /proc. All are 0, false or empty if the process does not exist. */
namespace quillmere::figures {

/** Proportional set size in bytes: private memory, plus the process's share of shared memory. */
qint64 proportionalSetSize(qint64 pid);
/** Resident set size, in bytes. */
qint64 residentSetSize(qint64 pid);
/** Processor time spent so far by all of its threads, in seconds. */
double processorSeconds(qint64 pid);
/** Whether a file whose path contains `name` is mapped into the process. */
bool maps(qint64 pid, const QString& name);
/** The names of the process's threads, sorted. */
QStringList threads(qint64 pid);

} // namespace quillmere::figures
