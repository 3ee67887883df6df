#pragma once

#include <QString>
#include <QStringList>

/** What the kernel says of a running process. All read as 0, or false, when it is gone. */
namespace figures {

/** Proportional set size, in bytes: its own memory, and its share of what it shares. */
qint64 proportionalSetSize(qint64 pid);
/** Resident set size, in bytes. */
qint64 residentSetSize(qint64 pid);
/** Processor time spent so far by all of its threads, in seconds. */
double processorSeconds(qint64 pid);
/** Whether a file whose path contains `name` is mapped into it. */
bool maps(qint64 pid, const QString& name);
/** The names of its threads, sorted. */
QStringList threads(qint64 pid);

} // namespace figures
