#include "IniFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

bool isControlCharacter(char c)
{
    return (uchar(c) < 0x20 && c != '\r' && c != '\t') || c == 0x7f;
}

/** Checks the syntax line by line, because QSettings accepts nearly any text as a key without an error. */
bool isValidIni(const QByteArray& bytes)
{
    const auto lines = bytes.split('\n');
    return std::all_of(lines.begin(), lines.end(), [](const QByteArray& line) {
        const QByteArray text = line.trimmed();
        const bool isComment = text.isEmpty() || text.startsWith(';') || text.startsWith('#');
        const bool isSection = text.startsWith('[') && text.endsWith(']');
        return (isComment || isSection || text.contains('=')) &&
               std::none_of(line.begin(), line.end(), isControlCharacter);
    });
}

/** Renames the damaged file to an unused name, so that an earlier damaged file is not overwritten. */
bool renameDamaged(const QString& path)
{
    const QString stamp = QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
    const QString name = path + u".damaged-"_s + stamp;
    constexpr int attempts = 100;
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        const QString candidate = attempt == 1 ? name : name + u'-' + QString::number(attempt);
        if (!QFileInfo::exists(candidate))
            return QFile::rename(path, candidate);
    }
    return false;
}

} // namespace

IniFile IniFile::read(const QString& path)
{
    IniFile file;
    QFile bytes(path);
    if (!QFileInfo(path).isFile() || !bytes.open(QIODevice::ReadOnly))
        return file;
    const QSettings settings(path, QSettings::IniFormat);
    // QSettings parses lazily: status() is meaningful only after the values have been read.
    const QStringList keys = settings.allKeys();
    for (const QString& key : keys)
        file.values.insert(key, settings.value(key));
    file.isDamaged = settings.status() == QSettings::FormatError || !isValidIni(bytes.readAll());
    return file;
}

bool IniFile::write(const QString& path, const QMap<QString, QVariant>& changes,
                    const QMap<QString, QVariant>& allValues)
{
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return false;
    const bool mustRecreate = read(path).isDamaged;
    if (mustRecreate && !renameDamaged(path))
        return false;
    QSettings settings(path, QSettings::IniFormat);
    const QMap<QString, QVariant>& values = mustRecreate ? allValues : changes;
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (value->isValid())
            settings.setValue(value.key(), *value);
        else
            settings.remove(value.key());
    }
    settings.sync();
    return settings.status() == QSettings::NoError;
}

} // namespace quillmere
