#include "PluginFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace quillmere {

QString pluginFile(const QString& name, const QStringList& folders)
{
    const QDir program(QCoreApplication::applicationDirPath());
    for (const QString& folder : folders + QStringList{program.path(), program.filePath(u"" QUILLMERE_PLUGINS ""_s)}) {
        const QString path = QDir(folder).filePath(name);
        if (QFileInfo::exists(path))
            return QDir::cleanPath(path);
    }
    return {};
}

} // namespace quillmere
