#include "PluginFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

QString pluginFile(const QString& name, const QStringList& folders)
{
    const QDir beside(QCoreApplication::applicationDirPath());
    for (const QString& folder : folders + QStringList{beside.path(), beside.filePath(u"" QUILLMERE_PLUGINS ""_s)}) {
        const QString path = QDir(folder).filePath(name);
        if (QFileInfo::exists(path))
            return QDir::cleanPath(path);
    }
    return {};
}
