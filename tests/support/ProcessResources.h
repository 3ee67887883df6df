#pragma once

#include <QDir>
#include <QFile>

#include <algorithm>

namespace quillmere {

/** Counts the file descriptors and threads of this process at construction. */
struct ProcessResources
{
    qsizetype descriptors = entries(QStringLiteral("/proc/self/fd")).size();
    qsizetype threads = entries(QStringLiteral("/proc/self/task")).size();

    bool isWithin(const ProcessResources& other) const
    {
        return descriptors <= other.descriptors && threads <= other.threads;
    }
    QByteArray text() const
    {
        return QByteArray::number(descriptors) + " files, " + QByteArray::number(threads) + " threads";
    }

    /** Whether a video engine or renderer has not ended yet. Their threads outlive their player. */
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

} // namespace quillmere
