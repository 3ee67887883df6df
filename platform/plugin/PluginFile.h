#pragma once

#include <QString>
#include <QStringList>

namespace quillmere {

/**
 * Path of one of the program's plug-ins, such as "quillmere-video.so"; empty if it is not found. Searches `folders`,
 * then the executable's folder, then the installation's plug-in folder. Thread-safe.
 */
QString pluginFile(const QString& name, const QStringList& folders = {});

} // namespace quillmere
