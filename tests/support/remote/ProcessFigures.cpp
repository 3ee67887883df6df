#include "ProcessFigures.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quillmere::figures {

namespace {

QByteArray contents(qint64 pid, const QString& name)
{
    QFile file(u"/proc/%1/%2"_s.arg(pid).arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

qint64 kilobytes(const QByteArray& rollup, const QByteArray& key)
{
    for (const QByteArray& line : rollup.split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).simplified().split(' ').value(0).toLongLong();
    }
    return 0;
}

} // namespace

qint64 proportionalSetSize(qint64 pid)
{
    return kilobytes(contents(pid, u"smaps_rollup"_s), "Pss:") * 1024;
}

qint64 residentSetSize(qint64 pid)
{
    return kilobytes(contents(pid, u"smaps_rollup"_s), "Rss:") * 1024;
}

double processorSeconds(qint64 pid)
{
    const QByteArray stat = contents(pid, u"stat"_s);
    // The program's name is in parentheses and may contain spaces.
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    const qint64 ticks = fields.value(11).toLongLong() + fields.value(12).toLongLong();
    return double(ticks) / double(sysconf(_SC_CLK_TCK));
}

bool maps(qint64 pid, const QString& name)
{
    return contents(pid, u"maps"_s).contains(name.toUtf8());
}

QStringList threads(qint64 pid)
{
    QStringList names;
    const QDir folder(u"/proc/%1/task"_s.arg(pid));
    for (const QString& thread : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        names.append(QString::fromUtf8(contents(pid, u"task/"_s + thread + u"/comm"_s)).trimmed());
    names.sort();
    return names;
}

} // namespace quillmere::figures
