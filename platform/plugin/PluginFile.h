#pragma once

#include <QString>
#include <QStringList>

/**
 * Path of one of the set's plug-ins, such as "quillmere-video.so": in the first of `folders` that has it, else beside the
 * executable, else in the installation's folder of libraries; empty if it is nowhere. Any thread.
 */
QString pluginFile(const QString& name, const QStringList& folders = {});
