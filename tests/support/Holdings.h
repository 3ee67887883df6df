#pragma once

#include <QDir>
#include <QFile>

#include <algorithm>

/** What this process holds at the moment of its making. */
struct Holdings
{
    qsizetype descriptors = entries(QStringLiteral("/proc/self/fd")).size();
    qsizetype threads = entries(QStringLiteral("/proc/self/task")).size();

    bool isWithin(const Holdings& other) const { return descriptors <= other.descriptors && threads <= other.threads; }
    QByteArray text() const
    {
        return QByteArray::number(descriptors) + " files, " + QByteArray::number(threads) + " threads";
    }

    /** Whether an engine or a renderer has not ended yet: theirs are the threads that outlive their player. */
    static bool isPlayerEnding()
    {
        const QStringList threads = entries(QStringLiteral("/proc/self/task"));
        return std::any_of(threads.cbegin(), threads.cend(), [](const QString& thread) {
            QFile name(QStringLiteral("/proc/self/task/%1/comm").arg(thread));
            return name.open(QIODevice::ReadOnly) && name.readAll().startsWith("video-");
        });
    }

private:
    static QStringList entries(const QString& folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    }
};
