#include "TelevisionSet.h"

#include <QDir>
#include <QDirIterator>

using namespace Qt::StringLiterals;

TelevisionSet::TelevisionSet(const QString& log) : m_process(QStringLiteral(QUILLMERE_TV), {}, environment(), log) {}

QProcessEnvironment TelevisionSet::environment() const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    // What a test sets for itself; the program is to choose as it does in a living room.
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

QStringList TelevisionSet::writtenFiles() const
{
    QStringList files;
    QDirIterator walk(m_home.path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(QDir(m_home.path()).relativeFilePath(walk.next()));
    files.sort();
    return files;
}
