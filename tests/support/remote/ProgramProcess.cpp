#include "ProgramProcess.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace quillmere {

ProgramProcess::ProgramProcess(const QString& log, const QMap<qint64, double>& resumePositions)
{
    writeResumeFile(resumePositions);
    m_process = std::make_unique<ChildProcess>(QStringLiteral(QUILLMERE_TV), QStringList(), environment(), log);
}

void ProgramProcess::writeResumeFile(const QMap<qint64, double>& positions) const
{
    if (positions.isEmpty())
        return;
    QFile file(resumeFile());
    QDir().mkpath(QFileInfo(file).path());
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("The resume positions cannot be written.");
    file.write("[General]\n");
    for (const auto& [id, seconds] : positions.asKeyValueRange())
        file.write(u"resume.tape.%1=%2\n"_s.arg(id).arg(seconds).toUtf8());
}

QString ProgramProcess::resumeFile() const
{
    return m_home.path() + u"/.local/share/quillmere-tv/resume.ini"_s;
}

std::optional<double> ProgramProcess::savedPosition(qint64 tape) const
{
    QFile file(resumeFile());
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray key = "resume.tape." + QByteArray::number(tape) + '=';
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().toDouble();
    }
    return std::nullopt;
}

QProcessEnvironment ProgramProcess::environment() const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    // Variables that tests set for themselves. The program must choose its defaults, as on a viewer's machine.
    for (const QString& name :
         {u"QT_QUICK_BACKEND"_s, u"QT_QPA_PLATFORM"_s, u"QT_SCALE_FACTOR"_s, u"WAYLAND_DISPLAY"_s})
        variables.remove(name);
    const QString home = m_home.path();
    const std::pair<QString, QString> folders[] = {{u"HOME"_s, u""_s},
                                                   {u"XDG_CONFIG_HOME"_s, u"/.config"_s},
                                                   {u"XDG_DATA_HOME"_s, u"/.local/share"_s},
                                                   {u"XDG_STATE_HOME"_s, u"/.local/state"_s},
                                                   {u"XDG_CACHE_HOME"_s, u"/.cache"_s}};
    for (const auto& [name, folder] : folders)
        variables.insert(name, home + folder);
    return variables;
}

QStringList ProgramProcess::writtenFiles() const
{
    QStringList files;
    QDirIterator iterator(m_home.path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (iterator.hasNext())
        files.append(QDir(m_home.path()).relativeFilePath(iterator.next()));
    files.sort();
    return files;
}

} // namespace quillmere
