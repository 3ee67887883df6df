#include "IniFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isControlCharacter(char c)
{
    return (uchar(c) < 0x20 && c != '\r' && c != '\t') || c == 0x7f;
}

/** QSettings takes nearly anything for a key without complaint, so the form is checked line by line. */
bool hasIniForm(const QByteArray& bytes)
{
    const auto lines = bytes.split('\n');
    return std::all_of(lines.begin(), lines.end(), [](const QByteArray& line) {
        const QByteArray text = line.trimmed();
        const bool isNote = text.isEmpty() || text.startsWith(';') || text.startsWith('#');
        const bool isSection = text.startsWith('[') && text.endsWith(']');
        return (isNote || isSection || text.contains('=')) &&
               std::none_of(line.begin(), line.end(), isControlCharacter);
    });
}

/** Renames the file to a name that no other has; rename alone could replace an older damaged one. */
bool setAside(const QString& path)
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
    // The parser is lazy: only after the values have been asked for does the status count.
    const QStringList keys = settings.allKeys();
    for (const QString& key : keys)
        file.values.insert(key, settings.value(key));
    file.isDamaged = settings.status() == QSettings::FormatError || !hasIniForm(bytes.readAll());
    return file;
}

bool IniFile::write(const QString& path, const QMap<QString, QVariant>& changes, const QMap<QString, QVariant>& whole)
{
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return false;
    const bool startsAnew = read(path).isDamaged;
    if (startsAnew && !setAside(path))
        return false;
    QSettings settings(path, QSettings::IniFormat);
    const QMap<QString, QVariant>& values = startsAnew ? whole : changes;
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (value->isValid())
            settings.setValue(value.key(), *value);
        else
            settings.remove(value.key());
    }
    settings.sync();
    return settings.status() == QSettings::NoError;
}
